#include "platform/macos/updates/UpdateRule.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace ovin {

bool canUpdate(const Resources& bundle) {
    constexpr std::array<std::string_view, 3> keys{"CFBundleIdentifier", "CFBundleVersion", "SUPublicEDKey"};
    const auto isGiven = [&](std::string_view key) { return !bundle.infoString(key).value_or(std::string()).empty(); };
    return std::all_of(keys.begin(), keys.end(), isGiven);
}

}  // namespace ovin
