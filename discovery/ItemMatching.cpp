#include "discovery/ItemMatching.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace ovin {
namespace {

using MenuBarGeometry::Entry;

/// One menu bar has some tens of items, so comparing all pairs needs no index.
bool standsUnder(const DiscoveredItem& item, const std::vector<Entry>& entries) {
    return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.element == item.element; });
}

std::vector<Entry> drawnOf(std::vector<Entry> entries) {
    std::erase_if(entries, [](const Entry& entry) { return !entry.isDrawn; });
    return entries;
}

void removeByCount(std::vector<DiscoveredItem>& items, const MenuBarGeometry::Snapshot& snapshot) {
    const std::map<ProcessID, int> drawnCounts = snapshot.drawnCountsByPID();
    std::map<ProcessID, int> foundCounts;
    for (const DiscoveredItem& item : items) ++foundCounts[item.ownerPID];
    std::map<ProcessID, std::set<std::string>> drawnTitles;
    for (const Entry& entry : drawnOf(snapshot.foreign())) {
        if (!entry.title.empty()) drawnTitles[*entry.owner].insert(entry.title);
    }

    std::erase_if(items, [&](const DiscoveredItem& item) {
        const auto drawn = drawnCounts.find(item.ownerPID);
        if (drawn == drawnCounts.end()) return false;
        if (drawn->second >= foundCounts[item.ownerPID]) return true;
        return drawnTitles[item.ownerPID].contains(item.title);
    });
}

}  // namespace

MatchingMode matchingMode(const std::vector<DiscoveredItem>& items, const std::vector<Entry>& foreign) {
    const bool anyMatches =
        std::any_of(items.begin(), items.end(), [&](const DiscoveredItem& item) { return standsUnder(item, foreign); });
    return anyMatches ? MatchingMode::element : MatchingMode::perAppCount;
}

void removeDrawn(std::vector<DiscoveredItem>& items, const MenuBarGeometry::Snapshot& snapshot, MatchingMode mode) {
    if (mode == MatchingMode::perAppCount) return removeByCount(items, snapshot);
    const auto drawn = drawnOf(snapshot.foreign());
    std::erase_if(items, [&](const DiscoveredItem& item) { return standsUnder(item, drawn); });
}

}  // namespace ovin
