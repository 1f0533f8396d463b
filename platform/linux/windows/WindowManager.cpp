#include "platform/linux/windows/WindowManager.h"

#include <QtGui/qguiapplication_platform.h>

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <array>
#include <cstdint>
#include <cstring>

#include "platform/linux/displays/Xcb.h"

namespace ovin::WindowManager {
namespace {

/// The source of the request, by the window manager's rules: a part of the desktop that acts for the user.
constexpr std::uint32_t askedByUser = 2;
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;

/// Null on other platforms of the toolkit.
xcb_connection_t* connection() {
    const auto* application = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return application == nullptr ? nullptr : application->connection();
}

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    const auto question = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const FromXcb<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection, question, nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The window manager handles this after what was asked of the window before, because all requests go over one connection.
void ask(xcb_connection_t* server, xcb_window_t window, const char* request, std::array<std::uint32_t, 2> numbers) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(server, request);
    message.data.data32[0] = numbers[0];
    message.data.data32[1] = numbers[1];
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    constexpr std::uint32_t toWindowManager = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    char bytes[sizeof message];
    std::memcpy(bytes, &message, sizeof message);
    xcb_send_event(server, 0, root, toWindowManager, bytes);
    xcb_flush(server);
}

}  // namespace

void bringToFront(QWindow& window) {
    xcb_connection_t* const server = connection();
    if (server == nullptr) return;
    window.raise();
    ask(server, static_cast<xcb_window_t>(window.winId()), "_NET_ACTIVE_WINDOW", {askedByUser, XCB_CURRENT_TIME});
}

void bringToFront(QWidget& window) {
    window.show();
    window.raise();
    window.activateWindow();
    bringToFront(*window.windowHandle());
}

void showOnAllDesktops(QWidget& window) {
    xcb_connection_t* const server = connection();
    const auto id = static_cast<xcb_window_t>(window.winId());
    // Before the window is shown, so that it is at once where it belongs.
    if (server != nullptr && !window.isVisible()) {
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, id, atom(server, "_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1,
                            &allDesktops);
    }
    window.show();
    // Xfce's window manager takes the property of a new window for the number of a desktop, and then puts the window on the
    // last one. It understands the message.
    if (server != nullptr) ask(server, id, "_NET_WM_DESKTOP", {allDesktops, askedByUser});
}

bool composesWindows() {
    xcb_connection_t* const server = connection();
    if (server == nullptr) return false;
    static const xcb_atom_t composer = atom(server, "_NET_WM_CM_S0");
    const auto question = xcb_get_selection_owner(server, composer);
    const FromXcb<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(server, question, nullptr)};
    return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace ovin::WindowManager
