#pragma once

#include <string>

#include "platform/Alerts.h"
#include "platform/Resources.h"
#include "platform/UpdateFeed.h"
#include "platform/Views.h"

/// What people are shown and told about updates.
namespace ovin::UpdatePages {

enum Tag { open, later, skip, show };

/// Of the window, in points.
inline constexpr double width = 480;

/// There is a newer version, and where to get it.
[[nodiscard]] View offer(const std::string& version, const std::string& installed, const Resources& resources);

/// The small panel that tells of a newer version which a scheduled check has found.
[[nodiscard]] View reminder(const std::string& version, const Resources& resources);

[[nodiscard]] Alert upToDate(const std::string& installed);
[[nodiscard]] Alert failed(FeedFailure failure);
/// This build knows of no feed.
[[nodiscard]] Alert noFeed();

}  // namespace ovin::UpdatePages
