#include "discovery/DiscoveredItem.h"

namespace ovin {

std::string DiscoveredItem::identity() const {
    return std::to_string(ownerPID) + "|" + title + "|" + std::to_string(element.hash());
}

}  // namespace ovin
