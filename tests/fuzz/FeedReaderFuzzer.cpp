// Feeds: whatever the text is, the reader passes on nothing that it must not.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/linux/updates/FeedText.h"
#include "updates/NewestItem.h"
#include "updates/VersionComparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto items = ovin::readFeed({reinterpret_cast<const char*>(data), size});
    if (!items) return 0;
    const auto item = ovin::newestItem(*items, "1", "");
    if (!item) return 0;
    const bool isFine = ovin::compareVersions(item->version, "1") > 0 && ovin::shownVersion(*item).size() <= 32 &&
                        ovin::pageOf(*item).starts_with("http");
    if (!isFine) __builtin_trap();
    return 0;
}
