// Three versions, separated by line ends: whatever they are, comparing them has to give an order.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "updates/VersionComparison.h"

namespace {

void require(bool condition) {
    if (!condition) __builtin_trap();
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto a = takeLine(text);
    const auto b = takeLine(text);
    const auto c = takeLine(text);
    using ovin::compareVersions;
    require(compareVersions(a, a) == 0);
    require((compareVersions(a, b) < 0) == (compareVersions(b, a) > 0));
    require((compareVersions(a, b) == 0) == (compareVersions(b, a) == 0));
    if (compareVersions(a, b) <= 0 && compareVersions(b, c) <= 0) require(compareVersions(a, c) <= 0);
    if (compareVersions(a, b) == 0) require((compareVersions(a, c) < 0) == (compareVersions(b, c) < 0));
    return 0;
}
