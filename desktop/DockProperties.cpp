#include "desktop/DockProperties.h"

#include "desktop/X11Properties.h"

namespace ovin {

void makeDock(WId window) {
    const auto id = static_cast<xcb_window_t>(window);
    X11Properties::setNumbers(id, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {X11Properties::atom("_NET_WM_WINDOW_TYPE_DOCK")});
    X11Properties::setNumbers(id, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {0xFFFFFFFF});
}

void reserveTop(WId window, const QRect& frame) {
    const auto id = static_cast<xcb_window_t>(window);
    const auto bottom = static_cast<std::uint32_t>(frame.bottom() + 1);
    const auto left = static_cast<std::uint32_t>(frame.left());
    const auto right = static_cast<std::uint32_t>(frame.right());
    X11Properties::setNumbers(id, "_NET_WM_STRUT", XCB_ATOM_CARDINAL, {0, 0, bottom, 0});
    X11Properties::setNumbers(id, "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL,
                              {0, 0, bottom, 0, 0, 0, 0, 0, left, right, 0, 0});
}

}  // namespace ovin
