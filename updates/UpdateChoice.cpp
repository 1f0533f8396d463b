#include "updates/UpdateChoice.h"

#include <algorithm>

#include "platform/UrlHost.h"
#include "updates/VersionComparison.h"

namespace ovin {
namespace {

/// 64 bytes in base64.
constexpr std::size_t signatureLength = 88;
/// Room for all of a package is taken before its signature can be verified: a feed alone must not fill a disk.
constexpr std::uint64_t longestPackage = std::uint64_t{1} << 30;

bool isPlausible(std::uint64_t length) { return length > 0 && length <= longestPackage; }

/// The world looks again, at redirections too; an item that could not be downloaded is not worth an offer.
bool isSafe(std::string_view url, bool mayReadThisMachine) {
    constexpr std::string_view safe = "https://";
    if (url.starts_with(safe)) return url.size() > safe.size();
    return mayReadThisMachine && url.starts_with("http://") && leadsToThisMachine(url);
}

bool runsOn(const FeedItem& item, const std::string& system) {
    return (item.minimumSystemVersion.empty() || compareVersions(system, item.minimumSystemVersion) >= 0) &&
           (item.maximumSystemVersion.empty() || compareVersions(system, item.maximumSystemVersion) <= 0);
}

bool canBeInstalled(const FeedItem& item, const UpdatePackages& packages, bool mayReadThisMachine) {
    return item.operatingSystem == "linux" && item.channel.empty() && isPlausible(item.length.value_or(0)) &&
           item.edSignature.size() == signatureLength && isSafe(item.url, mayReadThisMachine) &&
           packages.suits(fileNameIn(item.url)) && runsOn(item, packages.systemVersion());
}

/// Whether it is this user's turn. An item without a date cannot be phased.
bool isRolledOut(const FeedItem& item, const UpdateSeeker::Unasked& unasked) {
    if (!item.phasedRolloutInterval || !item.published || *item.phasedRolloutInterval <= std::chrono::seconds(0))
        return true;
    const std::chrono::seconds since = unasked.date - *item.published;
    return since / unasked.group >= *item.phasedRolloutInterval;
}

bool isWorthTelling(const FeedItem& item, const UpdateSeeker& seeker) {
    if (!seeker.unasked || isCriticalFor(item, seeker.installedVersion)) return true;
    const bool isSkipped =
        !seeker.unasked->skippedVersion.empty() && compareVersions(item.version, seeker.unasked->skippedVersion) <= 0;
    return !isSkipped && (seeker.unasked->group <= 0 || isRolledOut(item, *seeker.unasked));
}

}  // namespace

std::optional<FeedItem> chooseUpdate(const Feed& feed, const UpdatePackages& packages, const UpdateSeeker& seeker) {
    const FeedItem* best = nullptr;
    for (const FeedItem& item : feed) {
        if (item.version.empty() || compareVersions(item.version, seeker.installedVersion) <= 0) continue;
        if (!canBeInstalled(item, packages, seeker.mayReadThisMachine) || !isWorthTelling(item, seeker)) continue;
        if (best == nullptr || compareVersions(item.version, best->version) > 0) best = &item;
    }
    if (best == nullptr) return std::nullopt;
    return *best;
}

bool isCriticalFor(const FeedItem& item, std::string_view installedVersion) {
    return item.isCritical && (item.criticalBefore.empty() || compareVersions(installedVersion, item.criticalBefore) < 0);
}

std::string fileNameIn(std::string_view url) {
    url = url.substr(0, url.find_first_of("?#"));
    const std::size_t scheme = url.find("://");
    const std::size_t slash = url.rfind('/');
    if (slash == std::string_view::npos || (scheme != std::string_view::npos && slash <= scheme + 2)) return {};
    return std::string(url.substr(slash + 1));
}

std::string shownVersion(const FeedItem& item) { return item.shortVersion.empty() ? item.version : item.shortVersion; }

}  // namespace ovin
