#include "platform/linux/displays/RawButtons.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <utility>

namespace ovin {
namespace {

constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;

/// Raw events come for every button, whoever has grabbed the pointer, but only for the root window.
void selectRaw(xcb_connection_t* connection, std::uint32_t events) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, events};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_input_xi_select_events(connection, root, 1, &selection.head);
    xcb_flush(connection);
}

bool isOf(const xcb_generic_event_t& event, std::uint16_t kind) {
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return false;
    // Release events have the same structure.
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);  // NOLINT
    return raw.event_type == kind && (raw.detail == leftButton || raw.detail == rightButton);
}

}  // namespace

std::unique_ptr<RawButtons> RawButtons::listen(Event event, std::function<void()> handler) {
    XcbConnection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    const FromXcb<xcb_input_xi_query_version_reply_t> version{
        xcb_input_xi_query_version_reply(connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr)};
    if (!version) return nullptr;
    return std::unique_ptr<RawButtons>(new RawButtons(std::move(connection), event, std::move(handler)));
}

RawButtons::RawButtons(XcbConnection connection, Event event, std::function<void()> handler)
    : connection_(std::move(connection)),
      event_(event == Event::press ? XCB_INPUT_RAW_BUTTON_PRESS : XCB_INPUT_RAW_BUTTON_RELEASE),
      handler_(std::move(handler)),
      notifier_(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read) {
    selectRaw(connection_.get(),
              event == Event::press ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS : XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { read(); });
}

void RawButtons::read() {
    bool isAny = false;
    while (const FromXcb<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        isAny = isAny || isOf(*event, event_);
    }
    if (xcb_connection_has_error(connection_.get()) != 0) notifier_.setEnabled(false);
    // Called from a copy, because the handler may destroy this object.
    if (const auto handler = handler_; isAny) handler();
}

}  // namespace ovin
