#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Resources.h"
#include "platform/UpdateFeed.h"
#include "platform/Views.h"

/// What the windows about updates show.
namespace ovin::UpdatePages {

/// `closed` is no button: the user has closed the window by other means.
enum Tag { install, later, skip, notes, cancel, restart, show, closed };

/// Of the window, in points.
inline constexpr double width = 500;

/// What an item says of itself, for `offer`; nothing when it says nothing.
[[nodiscard]] std::optional<View> notesOf(const FeedItem& item);

/// What is new, and the question.
struct Offer {
    FeedItem item;
    std::string installed;
    bool canBeSkipped = true;
    /// What the notes take when nothing holds them back, in points: what is higher than the window shows is scrolled.
    double notesHeight = 0;
};
[[nodiscard]] View offer(const Offer& offer, const Resources& resources);

/// The feed is being read, which can be cancelled.
[[nodiscard]] View looking(const Resources& resources);
/// So many bytes of `length` have come in; the download can be cancelled. Equal for amounts that look the same.
[[nodiscard]] View downloading(const std::string& version, std::uint64_t received, std::uint64_t length,
                               const Resources& resources);
/// The package is being verified and installed, which cannot be cancelled any more.
[[nodiscard]] View installing(const std::string& version, const Resources& resources);
/// The new version runs from the next start on, which can be now.
[[nodiscard]] View installed(const std::string& version, const Resources& resources);

/// The small panel that tells of an update that nobody asked for.
[[nodiscard]] View reminder(const std::string& version, const Resources& resources);

}  // namespace ovin::UpdatePages
