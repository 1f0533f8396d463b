#include "platform/linux/XInputEventMonitor.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <QApplication>
#include <QSocketNotifier>
#include <utility>

#include "platform/linux/Xcb.h"

namespace ovin {
namespace {

constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;

/// Raw events come for every press, whoever has grabbed the pointer, but only to those who ask at the root window.
void selectRawPresses(xcb_connection_t* connection) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_input_xi_select_events(connection, root, 1, &selection.head);
    xcb_flush(connection);
}

bool isPress(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return false;
    const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);  // NOLINT
    return press.event_type == XCB_INPUT_RAW_BUTTON_PRESS && (press.detail == leftButton || press.detail == rightButton);
}

class Monitor final : public EventMonitor::Token {
public:
    Monitor(XcbConnection connection, std::function<void()> handler)
        : connection_(std::move(connection)),
          handler_(std::move(handler)),
          notifier_(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read) {
        selectRawPresses(connection_.get());
        QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { read(); });
    }

private:
    void read() {
        bool isPressed = false;
        while (const FromXcb<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
            isPressed = isPressed || isPress(*event);
        }
        if (xcb_connection_has_error(connection_.get()) != 0) notifier_.setEnabled(false);
        // Raw events do not say where; a press on a window of this program is not meant.
        if (isPressed && QApplication::topLevelAt(QCursor::pos()) == nullptr) handler_();
    }

    XcbConnection connection_;
    const std::function<void()> handler_;
    QSocketNotifier notifier_;
};

}  // namespace

std::unique_ptr<EventMonitor::Token> XInputEventMonitor::monitorMouseDowns(std::function<void()> handler) {
    XcbConnection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    const FromXcb<xcb_input_xi_query_version_reply_t> version{
        xcb_input_xi_query_version_reply(connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr)};
    if (!version) return nullptr;
    return std::make_unique<Monitor>(std::move(connection), std::move(handler));
}

}  // namespace ovin
