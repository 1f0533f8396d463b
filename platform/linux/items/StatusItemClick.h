#pragma once

#include <optional>
#include <vector>

namespace ovin {

/// What a status item can be asked for.
enum class StatusItemRequest { menu, activate, secondaryActivate, contextMenu };

/// What an item says about itself that decides a click.
struct StatusItemClickTraits {
    /// The property `ItemIsMenu`; absent when the item does not have it.
    std::optional<bool> itemIsMenu;
    /// Whether it names a menu object. Nothing says that the object is there.
    bool hasMenu = false;
};

/// What to ask an item for, one request after the other until one succeeds: an error of the item leads to the next request,
/// no answer does not.
[[nodiscard]] std::vector<StatusItemRequest> leftClickRequests(const StatusItemClickTraits& traits);
[[nodiscard]] std::vector<StatusItemRequest> rightClickRequests(const StatusItemClickTraits& traits);

}  // namespace ovin
