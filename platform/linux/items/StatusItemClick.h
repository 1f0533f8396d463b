#pragma once

#include <optional>
#include <vector>

namespace ovin {

/// What a status item can be asked for.
enum class StatusItemRequest { menu, activate, secondaryActivate, contextMenu };

/// The properties of an item that decide what a click does.
struct StatusItemClickTraits {
    /// The property `ItemIsMenu`; absent when the item does not have it.
    std::optional<bool> itemIsMenu;
    /// Whether it names a menu object, which may not exist.
    bool hasMenu = false;
};

/// The requests to send to an item one after the other until one succeeds. An error of the item leads to the next request, a
/// missing answer does not.
[[nodiscard]] std::vector<StatusItemRequest> leftClickRequests(const StatusItemClickTraits& traits);
[[nodiscard]] std::vector<StatusItemRequest> rightClickRequests(const StatusItemClickTraits& traits);

}  // namespace ovin
