#pragma once

#include <vector>

#include "discovery/DiscoveredItem.h"
#include "platform/Text.h"

namespace ovin {

/// Sorts items by application name and, among those whose application names are exactly equal, by title: both as the user's
/// locale sorts, letter case left aside. Items that compare as the same keep their order; so do items of applications whose
/// names differ only in letter case.
void sortForDisplay(const Text& text, std::vector<DiscoveredItem>& items);

}  // namespace ovin
