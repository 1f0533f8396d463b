#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/Handle.h"

namespace ovin {

/// One version that a feed announces for this system, unchecked: texts are empty where the feed says nothing, and may be
/// anything otherwise.
struct FeedItem {
    /// What versions are compared by, and what people are shown.
    std::string version;
    std::string shortVersion;
    /// A web page to get the version from.
    std::string link;

    friend bool operator==(const FeedItem&, const FeedItem&) = default;
};

enum class FeedFailure {
    /// Nobody was reached: no network, an unknown host, a connection that fails or falls silent.
    unreachable,
    /// The address, or one that it redirects to, is one where others could alter what is sent, or the server could not prove
    /// that it is the host.
    insecure,
    /// The server has answered, but not with a feed.
    unusable,
};

/// Reads feeds of the macOS update framework: RSS 2.0 with elements and attributes of that framework's namespace. Reads by
/// HTTPS, and by plain HTTP only from this machine. Main thread only.
class UpdateFeed {
public:
    using Answer = std::variant<std::vector<FeedItem>, FeedFailure>;

    /// Destroying an unfinished reading cancels it silently.
    using Reading = Handle;

    virtual ~UpdateFeed() = default;

    /// Reads the items for this system, in the order of the feed, without those that are for testers only. `finished` is
    /// called once, within a minute and never within this call, and may destroy the reading. The main thread neither waits
    /// for what the server sends nor reads or parses it. Never null.
    [[nodiscard]] virtual std::unique_ptr<Reading> read(const std::string& url, std::function<void(Answer)> finished) = 0;
};

}  // namespace ovin
