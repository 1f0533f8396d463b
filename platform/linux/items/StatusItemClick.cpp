#include "platform/linux/items/StatusItemClick.h"

namespace ovin {

using enum StatusItemRequest;

// An item with a menu but without `ItemIsMenu` gets its menu first: such programs do not implement activation.
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
