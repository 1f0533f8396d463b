#include "platform/linux/items/StatusItemClick.h"

namespace ovin {

using enum StatusItemRequest;

// An item that lacks `ItemIsMenu` and has a menu is one of those programs that know of no activation at all.
std::vector<StatusItemRequest> leftClickRequests(const StatusItemClickTraits& traits) {
    if (traits.itemIsMenu == true) return rightClickRequests(traits);
    if (!traits.hasMenu) return {activate, contextMenu};
    if (traits.itemIsMenu == false) return {activate, menu, contextMenu};
    return {menu, activate, contextMenu};
}

std::vector<StatusItemRequest> rightClickRequests(const StatusItemClickTraits& traits) {
    if (traits.hasMenu) return {menu, contextMenu};
    return {contextMenu};
}

}  // namespace ovin
