#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/UpdateFeed.h"

namespace ovin {

/// The items of a feed that are for Linux, in its order, without those of update channels, 1000 at most. Nothing when the
/// text is no feed, is not well-formed, nests deeper than any real feed or declares a document type (which may declare
/// entities). Takes time in proportion to the text, whatever it contains. Any thread.
[[nodiscard]] std::optional<std::vector<FeedItem>> readFeed(std::string_view text);

}  // namespace ovin
