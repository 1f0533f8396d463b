#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/UpdateFeed.h"
#include "platform/UpdatePackages.h"

namespace ovin {

/// Who looks for an update, and when.
struct UpdateSeeker {
    std::string installedVersion;
    /// Whether plain HTTP will do for packages on this very machine, as those of a test feed.
    bool mayReadThisMachine = false;
    /// A version that the user does not want to hear of, and the group of a phased roll-out, 0 to 6, that the user is in.
    /// For checks that nobody asked for: who asks is told everything.
    struct Unasked {
        std::string skippedVersion;
        int group = 0;
        /// Since the beginning of 1970 in UTC.
        std::chrono::seconds date{0};
    };
    std::optional<Unasked> unasked = {};
};

/// The item with the newest version that is newer than the installed one and can be installed here; nothing when there is
/// none. Items without a version, a plausible signature, a length (1 GiB at most), an address that is safe to download from
/// or a package that suits this computer are no candidates, nor are those for other systems and those of a channel.
[[nodiscard]] std::optional<FeedItem> chooseUpdate(const Feed& feed, const UpdatePackages& packages,
                                                   const UpdateSeeker& seeker);

/// Whether an item cannot be skipped by whoever has this version.
[[nodiscard]] bool isCriticalFor(const FeedItem& item, std::string_view installedVersion);

/// The name of the file that a URL leads to.
[[nodiscard]] std::string fileNameIn(std::string_view url);

/// What people are told of an item's version.
[[nodiscard]] std::string shownVersion(const FeedItem& item);

}  // namespace ovin
