#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ovin {

/// Where a status item lives: a connection of the session bus and an object of it.
struct StatusItemAddress {
    /// A unique name (":1.7") or a well-known one, as the program gave it.
    std::string destination;
    std::string path;

    /// The entry of `RegisteredStatusNotifierItems`, for example ":1.7/StatusNotifierItem".
    [[nodiscard]] std::string joined() const { return destination + path; }

    friend bool operator==(const StatusItemAddress&, const StatusItemAddress&) = default;
};

/// What a program means by the argument of a registration, or an entry of the list of registered items means: a bus name
/// (the item is at the customary path), a path (an item of the sender) or both joined. Nothing when it can be none of them.
[[nodiscard]] std::optional<StatusItemAddress> statusItemAddress(std::string_view argument, std::string_view sender);

/// Whether the bus would take `path` as an object's path, and whether it is of a sane length.
[[nodiscard]] bool isObjectPath(std::string_view path);

}  // namespace ovin
