#include "platform/linux/windows/PressCatcher.h"

#include <QtGui/qguiapplication_platform.h>

#include <QApplication>
#include <QEvent>
#include <algorithm>
#include <cstdint>

#include "platform/linux/displays/Xcb.h"
#include "platform/linux/system/WaylandSession.h"
#include "platform/linux/windows/LedgeWindow.h"

namespace ovin {
namespace {

constexpr std::uint8_t translucentDepth = 32;

/// Null on other platforms of the toolkit.
xcb_connection_t* connection() {
    const auto* application = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return application == nullptr ? nullptr : application->connection();
}

/// XCB_NONE where windows cannot be translucent.
xcb_visualid_t translucentVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth != translucentDepth) continue;
        const auto visual = xcb_depth_visuals_iterator(depth.data);
        if (visual.rem > 0) return visual.data->visual_id;
    }
    return XCB_NONE;
}

/// Whether it closes at a press elsewhere.
bool closesAtAPress(const QObject* object) {
    if (!object->isWidgetType()) return false;
    const auto* widget = static_cast<const QWidget*>(object);
    return widget->isWindow() && (widget->windowType() == Qt::Popup || dynamic_cast<const LedgeWindow*>(widget) != nullptr);
}

}  // namespace

PressCatcher::PressCatcher() {
    if (isWaylandSession() && connection() != nullptr) qApp->installEventFilter(this);
}

PressCatcher::~PressCatcher() {
    if (qApp != nullptr) uncover();
}

/// The toolkit tells that a widget is shown before it shows the widget's window, so the cover lies below that window.
bool PressCatcher::eventFilter(QObject* object, QEvent* event) {
    const bool isShown = event->type() == QEvent::Show && !event->spontaneous();
    const bool isHidden = event->type() == QEvent::Hide && !event->spontaneous();
    if ((isShown || isHidden) && closesAtAPress(object)) {
        std::erase(open_, object);
        if (isShown) open_.push_back(object);
        if (open_.empty()) {
            uncover();
        } else if (cover_ == XCB_WINDOW_NONE) {
            cover();
        }
    }
    return QObject::eventFilter(object, event);
}

/// Over the toolkit's connection, so that the server shows this window before the one that closes at a press. It asks for no
/// event: its being there is enough for raw events and for the grab of a menu.
void PressCatcher::cover() {
    xcb_connection_t* const server = connection();
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(server)).data;
    const xcb_visualid_t visual = translucentVisual(screen);
    const FromXcb<xcb_get_geometry_reply_t> size{
        xcb_get_geometry_reply(server, xcb_get_geometry(server, screen.root), nullptr)};
    if (visual == XCB_NONE || !size) return;
    const xcb_colormap_t colors = xcb_generate_id(server);
    xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colors, screen.root, visual);
    cover_ = xcb_generate_id(server);
    constexpr std::uint32_t attributes =
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP;
    const std::uint32_t values[] = {0, 0, 1, colors};
    xcb_create_window(server, translucentDepth, cover_, screen.root, 0, 0, size->width, size->height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, attributes, values);
    // The window keeps it for as long as it needs it.
    xcb_free_colormap(server, colors);
    xcb_map_window(server, cover_);
    xcb_flush(server);
}

void PressCatcher::uncover() {
    if (cover_ == XCB_WINDOW_NONE) return;
    xcb_destroy_window(connection(), cover_);
    xcb_flush(connection());
    cover_ = XCB_WINDOW_NONE;
}

}  // namespace ovin
