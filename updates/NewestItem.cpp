#include "updates/NewestItem.h"

#include <algorithm>
#include <cstddef>

#include "platform/Deployment.h"
#include "platform/Workspace.h"
#include "updates/VersionComparison.h"

namespace ovin {
namespace {

/// More than any version needs, and not more than a line of a window holds.
constexpr std::size_t longestVersion = 32;

bool looksLikeVersion(const std::string& text) {
    const auto isPrintable = [](char character) { return character >= ' ' && character < 0x7f; };
    return !text.empty() && text.size() <= longestVersion && std::all_of(text.begin(), text.end(), isPrintable);
}

}  // namespace

std::optional<FeedItem> newestItem(const std::vector<FeedItem>& items, std::string_view installed,
                                   std::string_view skipped) {
    const FeedItem* newest = nullptr;
    for (const FeedItem& item : items) {
        if (!looksLikeVersion(item.version) || compareVersions(item.version, installed) <= 0) continue;
        if (!skipped.empty() && compareVersions(item.version, skipped) <= 0) continue;
        if (newest == nullptr || compareVersions(item.version, newest->version) > 0) newest = &item;
    }
    if (newest == nullptr) return std::nullopt;
    return *newest;
}

std::string shownVersion(const FeedItem& item) {
    return looksLikeVersion(item.shortVersion) ? item.shortVersion : item.version;
}

std::string pageOf(const FeedItem& item) {
    const bool isWebPage = item.link.starts_with("https://") || item.link.starts_with("http://");
    return isWebPage && mayBeOpened(item.link) ? item.link : std::string(deployment::siteURL);
}

}  // namespace ovin
