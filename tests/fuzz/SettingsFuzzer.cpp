// The file of the settings: whatever it holds, a change keeps the settings that could be read.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <variant>

#include "platform/linux/system/FileUserDefaults.h"
#include "tests/linux/system/SimulatedDisk.h"

namespace {

/// Numbers that are none differ from themselves.
bool isSame(const std::optional<ovin::UserDefaults::Value>& a, const std::optional<ovin::UserDefaults::Value>& b) {
    if (!a || !b) return a.has_value() == b.has_value();
    const auto* number = std::get_if<double>(&*a);
    const auto* other = std::get_if<double>(&*b);
    return number && other && *number != *number ? *other != *other : *a == *b;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ovin::SimulatedDisk disk;
    const int file = disk.open("/defaults", O_CREAT, 0);
    (void)disk.write(file, data, size);
    disk.close(file);
    ovin::FileUserDefaults defaults("/defaults", disk);
    constexpr const char* keys[] = {"a", "", "OvinHasShownGuide", "tab\tkey", "back\\slash"};
    std::optional<ovin::UserDefaults::Value> before[std::size(keys)];
    for (std::size_t i = 0; i < std::size(keys); ++i) before[i] = defaults.object(keys[i]);
    const std::string text(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 100));
    const ovin::UserDefaults::Value written = text;
    if (!defaults.isReadable()) return 0;
    if (!defaults.set("changed", written) || !isSame(defaults.object("changed"), written)) __builtin_trap();
    if (!defaults.remove("changed") || defaults.object("changed")) __builtin_trap();
    for (std::size_t i = 0; i < std::size(keys); ++i) {
        if (!isSame(defaults.object(keys[i]), before[i])) __builtin_trap();
    }
    return 0;
}
