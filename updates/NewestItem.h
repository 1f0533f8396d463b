#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UpdateFeed.h"

namespace ovin {

/// The item with the newest version that is newer than the installed one, and than one that the user does not want to hear
/// of; nothing when there is none. What is no version by its looks, as a long text or one with other characters than those
/// of ASCII, is none.
[[nodiscard]] std::optional<FeedItem> newestItem(const std::vector<FeedItem>& items, std::string_view installed,
                                                 std::string_view skipped);

/// What people are told of an item's version.
[[nodiscard]] std::string shownVersion(const FeedItem& item);

/// The web page to get it from: the item's, or else the product's.
[[nodiscard]] std::string pageOf(const FeedItem& item);

}  // namespace ovin
