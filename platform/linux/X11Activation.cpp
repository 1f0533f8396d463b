#include "platform/linux/X11Activation.h"

#include <xcb/xcb.h>

#include <QtGui/qguiapplication_platform.h>
#include <QGuiApplication>
#include <QWindow>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace ovin {
namespace {

/// In requests to the window manager: that they come from the user, by way of a task bar and its like.
constexpr std::uint32_t fromTheUser = 2;

xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name) {
    const auto question = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, question, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace

void activateWindow(QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) return;
    window.raise();
    xcb_connection_t* const connection = x11->connection();
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = static_cast<xcb_window_t>(window.winId());
    request.type = atomOf(connection, "_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromTheUser;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, 0, root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&request));  // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
    xcb_flush(connection);
}

}  // namespace ovin
