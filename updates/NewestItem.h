#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UpdateFeed.h"

namespace ovin {

/// The item with the newest version, if that is newer than the installed one and than the one that the user has skipped;
/// nothing otherwise. Items whose version does not look like one, such as a long text or one beyond ASCII, do not count.
[[nodiscard]] std::optional<FeedItem> newestItem(const std::vector<FeedItem>& items, std::string_view installed,
                                                 std::string_view skipped);

/// What people are told of an item's version.
[[nodiscard]] std::string shownVersion(const FeedItem& item);

/// The web page to get the item's version from: the item's own, or else the product's.
[[nodiscard]] std::string pageOf(const FeedItem& item);

}  // namespace ovin
