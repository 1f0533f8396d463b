#pragma once

#include <vector>

#include "discovery/DiscoveredItem.h"
#include "platform/Text.h"

namespace ovin {

/// Gives a short label, made from the title, to each item of an application that has several in `items`. The only item of an
/// application needs no label, because the application's icon identifies it.
void addLabels(const Text& text, std::vector<DiscoveredItem>& items);

}  // namespace ovin
