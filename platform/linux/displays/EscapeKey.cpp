#include "platform/linux/displays/EscapeKey.h"

#include <QGuiApplication>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

namespace ovin {
namespace {

constexpr xcb_keysym_t escape = 0xff1b;

std::optional<xcb_keycode_t> escapeCode(xcb_connection_t* connection) {
    const xcb_setup_t* const setup = xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const FromXcb<xcb_get_keyboard_mapping_reply_t> reply{xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr)};
    if (!reply || reply->keysyms_per_keycode == 0) return std::nullopt;
    const std::span symbols(xcb_get_keyboard_mapping_keysyms(reply.get()),
                            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(reply.get())));
    for (std::size_t index = 0; index < symbols.size(); index += reply->keysyms_per_keycode) {
        if (symbols[index] == escape)
            return static_cast<xcb_keycode_t>(setup->min_keycode + index / reply->keysyms_per_keycode);
    }
    return std::nullopt;
}

/// With the locks in either state, but without other modifiers: desktops have shortcuts with these.
void grabOn(xcb_connection_t* connection, xcb_keycode_t key) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    for (const int locks : {0, XCB_MOD_MASK_LOCK + 0, XCB_MOD_MASK_2 + 0, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}) {
        xcb_grab_key(connection, 0, root, static_cast<std::uint16_t>(locks), key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    }
    xcb_flush(connection);
}

}  // namespace

std::unique_ptr<EscapeKey> EscapeKey::grab(std::function<void()> pressed) {
    if (QGuiApplication::platformName() != "xcb") return nullptr;
    XcbConnection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    const auto key = escapeCode(connection.get());
    if (!key) return nullptr;
    grabOn(connection.get(), *key);
    return std::unique_ptr<EscapeKey>(new EscapeKey(std::move(connection), std::move(pressed)));
}

EscapeKey::EscapeKey(XcbConnection connection, std::function<void()> pressed)
    : connection_(std::move(connection)),
      pressed_(std::move(pressed)),
      notifier_(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { read(); });
}

void EscapeKey::read() {
    bool isPressed = false;
    while (const FromXcb<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        isPressed = isPressed || (event->response_type & 0x7f) == XCB_KEY_PRESS;
    }
    if (xcb_connection_has_error(connection_.get()) != 0) notifier_.setEnabled(false);
    // Called from a copy, because the handler may destroy this object.
    if (const auto pressed = pressed_; isPressed) pressed();
}

}  // namespace ovin
