#pragma once

#include <chrono>
#include <vector>

#include "discovery/AppInfo.h"
#include "discovery/DiscoveredItem.h"
#include "platform/Platform.h"

namespace ovin {

/// How long any one request of a scan may take.
inline constexpr std::chrono::milliseconds scanTimeout{250};

/// Reads the status items of all applications at once, drawn or not, through the extras menu bar that each application has.
/// They come in the order in which the applications finish, or in that of `apps` where one thread reads them together, and
/// in its own order within each application. Of an application that does not answer the titles are missing, and the items
/// too unless the system itself lists them. Called within a task; blocks until every application has answered or let its
/// time run out: a quarter of a second for those that do not answer at all, and half a second after its last answer for one
/// that stops in the middle.
[[nodiscard]] std::vector<DiscoveredItem> scanItems(const Platform& platform, const std::vector<AppInfo>& apps);

}  // namespace ovin
