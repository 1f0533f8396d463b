#pragma once

#include <vector>

#include "discovery/DiscoveredItem.h"
#include "discovery/MenuBarGeometry.h"

namespace ovin {

/// How found items are told from those that the menu bar shows. The elements that an application gives for its items are
/// usually the very ones that stand under the agent's slots. Where they are not, all that can be compared is how many items
/// of each application are drawn, and their titles.
enum class MatchingMode { element, perAppCount };

/// By element as soon as one found item stands under any of the foreign slots.
[[nodiscard]] MatchingMode matchingMode(const std::vector<DiscoveredItem>& items,
                                        const std::vector<MenuBarGeometry::Entry>& foreign);

/// Removes from `items` those that the snapshot shows as drawn; the others keep their order. Items that match no slot stay.
/// By count, all items of an application go when as many are drawn as were found. When only some are drawn, those go that
/// have the title of a drawn item, even if two share it, because nothing tells which of the two is drawn.
void removeDrawn(std::vector<DiscoveredItem>& items, const MenuBarGeometry::Snapshot& snapshot, MatchingMode mode);

}  // namespace ovin
