#include "platform/linux/system/StandardErrorLog.h"

#include <unistd.h>

#include <string>

namespace ovin {
namespace {

std::string escaped(std::string_view line) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char character : line) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte != 0x7f) {
            result += character;
        } else {
            result += {'\\', 'x', digits[byte >> 4U], digits[byte & 0xfU]};
        }
    }
    return result;
}

}  // namespace

void StandardErrorLog::write(std::string_view line) {
    const std::string text = escaped(line) + "\n";
    // One call for each entry, so that entries of several threads do not mix.
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t count = ::write(descriptor_, text.data() + written, text.size() - written);
        if (count <= 0) return;
        written += static_cast<std::size_t>(count);
    }
}

}  // namespace ovin
