#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ovin {

/// One version that a feed announces, as it is written there: texts are empty where the feed says nothing.
struct FeedItem {
    /// What versions are compared by, and what people are shown.
    std::string version;
    std::string shortVersion;
    std::string operatingSystem;
    std::string minimumSystemVersion;
    std::string maximumSystemVersion;
    /// Items of a channel are for those alone who have asked for it.
    std::string channel;

    /// The package, and its length in bytes.
    std::string url;
    std::optional<std::uint64_t> length;
    /// The package's Ed25519 signature in base64.
    std::string edSignature;

    /// HTML, unless they are plain.
    std::string notes;
    bool areNotesPlain = false;
    /// A page with more of them.
    std::string notesLink;

    /// Since the beginning of 1970 in UTC.
    std::optional<std::chrono::seconds> published;
    /// After this time, each time, a further one of seven groups of users is told.
    std::optional<std::chrono::seconds> phasedRolloutInterval;
    /// Whether it is critical, and if it says so, for versions before which one only.
    bool isCritical = false;
    std::string criticalBefore;

    friend bool operator==(const FeedItem&, const FeedItem&) = default;
};

using Feed = std::vector<FeedItem>;

/// Reads the feeds of the macOS update framework: RSS 2.0 with elements and attributes of that framework's namespace.
class FeedReader {
public:
    virtual ~FeedReader() = default;

    /// The items of a feed, in its order; nothing when the text is no feed, is cut off, is not well-formed, or declares
    /// entities. Main thread only.
    [[nodiscard]] virtual std::optional<Feed> read(std::string_view text) const = 0;
};

}  // namespace ovin
