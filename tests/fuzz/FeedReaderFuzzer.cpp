// Feeds: whatever is read, nothing that must not be chosen is chosen.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/linux/updates/LinuxPackages.h"
#include "platform/linux/updates/QtFeedReader.h"
#include "updates/UpdateChoice.h"
#include "updates/VersionComparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto feed = ovin::QtFeedReader().read({reinterpret_cast<const char*>(data), size});
    if (!feed) return 0;
    static const ovin::LinuxPackages packages({{}, {}, "/nonexistent"});
    const auto item = ovin::chooseUpdate(*feed, packages, {"1"});
    if (!item) return 0;
    const bool isFine = ovin::compareVersions(item->version, "1") > 0 && item->length.value_or(0) > 0 &&
                        !item->edSignature.empty() && item->url.starts_with("https://") && item->operatingSystem == "linux";
    if (!isFine) __builtin_trap();
    return 0;
}
