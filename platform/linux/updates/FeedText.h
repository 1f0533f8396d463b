#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/UpdateFeed.h"

namespace ovin {

/// The items for Linux of a feed, in its order and without those of a channel, 1000 at most; nothing when the text is no
/// feed, is not well-formed, nests deeper than any real feed or declares a document type, and with it entities. Takes time
/// in proportion to the text, whatever it contains. Any thread.
[[nodiscard]] std::optional<std::vector<FeedItem>> readFeed(std::string_view text);

}  // namespace ovin
