#pragma once

#include "platform/UpdateFeed.h"

namespace ovin {

/// Reads feeds with Qt's XML reader. Feeds that declare a document type are refused as a whole, and with it all entities but
/// the five of XML itself; so are feeds that nest deeper than any real one.
class QtFeedReader final : public FeedReader {
public:
    [[nodiscard]] std::optional<Feed> read(std::string_view text) const override;
};

}  // namespace ovin
