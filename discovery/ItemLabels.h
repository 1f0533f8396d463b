#pragma once

#include <vector>

#include "discovery/DiscoveredItem.h"
#include "platform/Text.h"

namespace ovin {

/// Gives a short label, made from the title, to each item of an application that has several in `items`. An item that is
/// alone needs none: its application's icon tells it.
void addLabels(const Text& text, std::vector<DiscoveredItem>& items);

}  // namespace ovin
