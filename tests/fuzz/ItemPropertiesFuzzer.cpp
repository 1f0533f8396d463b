// What status items say, as it comes over the bus: the first byte is the length of a signature, which follows, and the rest
// is the body of a message. Whatever they are, reading stays within its bounds, and an icon's pixels fit its sides.

#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/items/StatusItemAddress.h"
#include "platform/linux/system/BusValue.h"

namespace {

void require(bool condition) {
    if (!condition) __builtin_trap();
}

void lookAt(const ovin::BusValue& value) {
    if (const auto* text = value.as<std::string>()) {
        if (const auto address = ovin::statusItemAddress(*text, ":1.1"))
            require(ovin::isObjectPath(address->path) && !address->destination.empty());
    }
    for (const auto& member : value.members()) lookAt(member);
    const auto* properties = value.as<ovin::BusValue::Dictionary>();
    if (properties == nullptr) return;
    for (const auto& [name, property] : *properties) lookAt(property);
    const auto icon = ovin::itemIcon(*properties);
    if (!icon) return;
    const auto& pixels = icon->pixels;
    require(std::max(pixels.width, pixels.height) <= ovin::ItemIcon::largestSide && icon->name.size() <= 1024);
    require(pixels.bytes.size() == static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height) * 4);
}

int receive(sd_bus_message* message, void*, sd_bus_error*) {
    for (const auto& value : ovin::busValues(message)) lookAt(value);
    return 1;
}

void append(std::string& message, std::uint32_t number) {
    for (unsigned shift = 0; shift < 32; shift += 8) message += static_cast<char>(number >> shift);
}

void pad(std::string& message) { message.resize((message.size() + 7) / 8 * 8); }

void appendField(std::string& fields, char code, char type, std::string_view text) {
    pad(fields);
    fields += code;
    fields += '\x01';
    fields += type;
    fields += '\0';
    if (type == 'g')
        fields += static_cast<char>(text.size());
    else
        append(fields, static_cast<std::uint32_t>(text.size()));
    fields += text;
    fields += '\0';
}

/// A signal with this body, least significant bytes first.
std::string signal(std::string_view signature, std::string_view body) {
    std::string fields;
    appendField(fields, 1, 'o', "/");
    appendField(fields, 2, 's', "a.b");
    appendField(fields, 3, 's', "c");
    appendField(fields, 8, 'g', signature);
    std::string message{'l', 4, 0, 1};
    append(message, static_cast<std::uint32_t>(body.size()));
    append(message, 1);
    append(message, static_cast<std::uint32_t>(fields.size()));
    message += fields;
    pad(message);
    message += body;
    return message;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view whole(reinterpret_cast<const char*>(data), size);
    const std::string_view signature = whole.substr(1, data[0]);
    const std::string sent = "DATA\r\nOK 0123456789abcdef0123456789abcdef\r\nAGREE_UNIX_FD\r\n" +
                             signal(signature, whole.substr(1 + signature.size()));

    std::array<int, 2> ends{};
    sd_bus* bus = nullptr;
    require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()) == 0);
    require(write(ends[1], sent.data(), sent.size()) == static_cast<ssize_t>(sent.size()));
    require(sd_bus_new(&bus) >= 0 && sd_bus_set_fd(bus, ends[0], ends[0]) >= 0);
    require(sd_bus_add_filter(bus, nullptr, receive, nullptr) >= 0 && sd_bus_start(bus) >= 0);
    for (int step = 0; step < 20 && sd_bus_process(bus, nullptr) > 0; ++step) {
    }
    sd_bus_close_unref(bus);
    close(ends[1]);
    return 0;
}
