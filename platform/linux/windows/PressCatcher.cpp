#include "platform/linux/windows/PressCatcher.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <array>
#include <cstdint>
#include <thread>
#include <utility>

#include "platform/linux/displays/Xcb.h"
#include "platform/linux/system/WaylandSession.h"
#include "platform/linux/windows/LedgeWindow.h"

namespace ovin {
namespace {

constexpr std::uint8_t translucentDepth = 32;

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

/// The window that covers the screens. It waits for presses on a thread of its own: while this program is busy, the user
/// loses one press to it and no more.
class PressCatcher::Cover {
public:
    /// Null where there is no X server, or windows cannot be translucent. Has the event loop close what is open for
    /// `catcher` when it is pressed, but not once it is destroyed.
    static std::unique_ptr<Cover> make(PressCatcher& catcher) {
        XcbConnection server(xcb_connect(nullptr, nullptr));
        if (xcb_connection_has_error(server.get()) != 0) return nullptr;
        const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(server.get())).data;
        const xcb_visualid_t visual = translucentVisual(screen);
        const FromXcb<xcb_get_geometry_reply_t> size{
            xcb_get_geometry_reply(server.get(), xcb_get_geometry(server.get(), screen.root), nullptr)};
        if (visual == XCB_NONE || !size) return nullptr;
        const xcb_window_t window = openWindow(server.get(), screen.root, visual, *size);
        return std::unique_ptr<Cover>(new Cover(std::move(server), window, catcher));
    }

    Cover(const Cover&) = delete;
    Cover& operator=(const Cover&) = delete;
    ~Cover() {
        destroyWindow();
        waiting_.join();
    }

private:
    Cover(XcbConnection server, xcb_window_t window, PressCatcher& catcher)
        : server_(std::move(server)), window_(window), catcher_(catcher), waiting_([this] { waitForPress(); }) {}

    /// The server shows it before this returns, and so before the window that closes at a press.
    static xcb_window_t openWindow(xcb_connection_t* server, xcb_window_t root, xcb_visualid_t visual,
                                   const xcb_get_geometry_reply_t& size) {
        const xcb_colormap_t colors = xcb_generate_id(server);
        xcb_create_colormap(server, XCB_COLORMAP_ALLOC_NONE, colors, root, visual);
        const xcb_window_t window = xcb_generate_id(server);
        constexpr std::uint32_t attributes =
            XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
        const std::array<std::uint32_t, 5> values{0, 0, 1, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                                                  colors};
        xcb_create_window(server, translucentDepth, window, root, 0, 0, size.width, size.height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, attributes, values.data());
        // The window keeps it for as long as it needs it.
        xcb_free_colormap(server, colors);
        const FromXcb<xcb_generic_error_t> error{xcb_request_check(server, xcb_map_window_checked(server, window))};
        return window;
    }

    /// Also ends the thread, which is told of it. Destroying a window twice only makes an error that nobody reads.
    void destroyWindow() {
        xcb_destroy_window(server_.get(), window_);
        xcb_flush(server_.get());
    }

    void waitForPress() {
        while (const FromXcb<xcb_generic_event_t> event{xcb_wait_for_event(server_.get())}) {
            const int kind = event->response_type & 0x7f;
            if (kind == XCB_DESTROY_NOTIFY) return;
            if (kind != XCB_BUTTON_PRESS) continue;
            destroyWindow();
            QMetaObject::invokeMethod(
                &catcher_,
                [weak = std::weak_ptr(alive_), &catcher = catcher_] {
                    if (!weak.expired()) catcher.closeAll();
                },
                Qt::QueuedConnection);
        }
    }

    const XcbConnection server_;
    const xcb_window_t window_;
    PressCatcher& catcher_;
    const std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
    /// The last, because it uses the others.
    std::thread waiting_;
};

PressCatcher::PressCatcher() {
    if (isWaylandSession() && QGuiApplication::platformName() == "xcb") qApp->installEventFilter(this);
}

PressCatcher::~PressCatcher() = default;

/// The toolkit tells that a widget is shown before it shows the widget's window, so the cover lies below that window.
bool PressCatcher::eventFilter(QObject* object, QEvent* event) {
    const bool isShown = event->type() == QEvent::Show && !event->spontaneous();
    const bool isHidden = event->type() == QEvent::Hide && !event->spontaneous();
    if ((isShown || isHidden) && closesAtAPress(object)) {
        auto* const window = static_cast<QWidget*>(object);
        std::erase(open_, window);
        if (isShown) open_.push_back(window);
        if (open_.empty()) {
            cover_.reset();
        } else if (!cover_) {
            cover_ = Cover::make(*this);
        }
    }
    return QObject::eventFilter(object, event);
}

/// Whatever button was pressed: of the middle one and the wheel nobody else hears.
void PressCatcher::closeAll() {
    // A window that closes may take others with it.
    const std::vector<QPointer<QWidget>> windows(open_.rbegin(), open_.rend());
    for (const QPointer<QWidget>& window : windows) {
        if (window) window->close();
    }
}

}  // namespace ovin
