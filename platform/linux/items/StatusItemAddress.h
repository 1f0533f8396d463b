#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ovin {

/// Where the item of a program is that tells no path.
inline constexpr std::string_view customaryItemPath = "/StatusNotifierItem";

/// The address of a status item: a connection of the session bus and an object's path.
struct StatusItemAddress {
    /// A unique name (":1.7") or a well-known one, as the program gave it.
    std::string destination;
    std::string path;

    /// The entry of `RegisteredStatusNotifierItems`, for example ":1.7/StatusNotifierItem".
    [[nodiscard]] std::string joined() const { return destination + path; }

    friend bool operator==(const StatusItemAddress&, const StatusItemAddress&) = default;
};

/// Reads the argument of a registration, or an entry of the list of registered items: a bus name (the item is at the
/// customary path), a path (an item of the sender) or both joined, with "@" between them or without. Nothing when it is none
/// of these.
[[nodiscard]] std::optional<StatusItemAddress> statusItemAddress(std::string_view argument, std::string_view sender);

/// Whether the bus accepts `path` as an object's path, and it has at most 1024 bytes.
[[nodiscard]] bool isObjectPath(const std::string& path);

}  // namespace ovin
