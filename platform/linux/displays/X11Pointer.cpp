#include "platform/linux/displays/X11Pointer.h"

#include <QtGui/qguiapplication_platform.h>
#include <QGuiApplication>

#include "platform/linux/displays/Xcb.h"

namespace ovin {

std::optional<X11Pointer> X11Pointer::read() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) return std::nullopt;
    xcb_connection_t* const connection = x11->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const FromXcb<xcb_query_pointer_reply_t> reply{
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr)};
    // Without the buttons of the wheel, which are never held down.
    constexpr int buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    if (!reply) return std::nullopt;
    return X11Pointer{{static_cast<double>(reply->root_x), static_cast<double>(reply->root_y)},
                      (reply->mask & buttons) != 0,
                      (reply->mask & XCB_MOD_MASK_CONTROL) != 0};
}

}  // namespace ovin
