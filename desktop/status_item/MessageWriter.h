#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace ovin {

struct MessageUnref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageUnref>;

/// Fills a message piece by piece and remembers the first error, so that only the end needs to look at it.
class MessageWriter {
public:
    explicit MessageWriter(sd_bus_message* message) : message_(message) {}

    /// A message that could not be made in the first place counts as the first error.
    MessageWriter(sd_bus_message* message, int error) : message_(message), status_(error < 0 ? error : 0) {}

    void text(const std::string& value) { basic('s', value.c_str()); }
    void path(const std::string& value) { basic('o', value.c_str()); }
    void number(std::int32_t value) { basic('i', &value); }
    void unsignedNumber(std::uint32_t value) { basic('u', &value); }
    void real(double value) { basic('d', &value); }
    void boolean(bool value) {
        const int wide = value ? 1 : 0;
        basic('b', &wide);
    }
    void bytes(std::span<const std::uint8_t> value) {
        if (status_ >= 0) note(sd_bus_message_append_array(message_, 'y', value.data(), value.size()));
    }

    /// `write` fills a container ('a' array, 'r' structure, 'v' variant, 'e' dictionary entry) of these contents.
    template <typename Write>
    void container(char type, const char* contents, Write write) {
        if (status_ >= 0) note(sd_bus_message_open_container(message_, type, contents));
        write();
        if (status_ >= 0) note(sd_bus_message_close_container(message_));
    }

    int status() const { return status_; }

    /// Sends the message, or returns the error that kept it from being complete.
    int send() { return status_ < 0 ? status_ : sd_bus_send(nullptr, message_, nullptr); }

private:
    void basic(char type, const void* value) {
        if (status_ >= 0) note(sd_bus_message_append_basic(message_, type, value));
    }
    void note(int result) {
        if (result < 0) status_ = result;
    }

    sd_bus_message* message_;
    int status_ = 0;
};

}  // namespace ovin
