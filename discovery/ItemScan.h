#pragma once

#include <chrono>
#include <set>
#include <vector>

#include "discovery/AppInfo.h"
#include "discovery/DiscoveredItem.h"
#include "platform/Platform.h"

namespace ovin {

/// How long any one request of a scan may take.
inline constexpr std::chrono::milliseconds scanTimeout{250};

/// What a scan of the running applications found.
struct ScannedItems {
    /// All status items, drawn or not: in the applications' order of completion, and in its own order within each.
    std::vector<DiscoveredItem> items;
    /// The owners that did not answer, and so have no items here.
    std::set<ProcessID> silentOwners;
};

/// Reads the status items of all applications at once, through the extras menu bar that each application has. Called within
/// a task; blocks until every application has answered or let its time run out.
[[nodiscard]] ScannedItems scanItems(const Platform& platform, const std::vector<AppInfo>& apps);

}  // namespace ovin
