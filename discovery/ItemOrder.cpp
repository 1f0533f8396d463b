#include "discovery/ItemOrder.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace ovin {
namespace {

using Items = std::vector<DiscoveredItem>;

/// Sorts the items of each application by title among the places that they hold in [first, last), a run of items whose
/// application names sort as the same.
void sortTitles(const Text& text, Items::iterator first, Items::iterator last) {
    std::map<std::string, std::vector<std::size_t>> placesByName;
    for (auto item = first; item != last; ++item) {
        placesByName[item->appName].push_back(static_cast<std::size_t>(item - first));
    }

    for (const auto& [name, places] : placesByName) {
        Items sorted;
        for (const std::size_t place : places) sorted.push_back(std::move(first[static_cast<std::ptrdiff_t>(place)]));
        std::stable_sort(sorted.begin(), sorted.end(), [&](const DiscoveredItem& a, const DiscoveredItem& b) {
            return text.compareIgnoringCase(a.title, b.title) < 0;
        });
        for (std::size_t i = 0; i < places.size(); ++i) {
            first[static_cast<std::ptrdiff_t>(places[i])] = std::move(sorted[i]);
        }
    }
}

}  // namespace

// Names and titles are sorted one after the other, because one test for both is no ordering: between "a" and "A" nothing is
// decided, while between two items of "A" the title decides, and what a sort makes of that depends on who wrote the sort.
void sortForDisplay(const Text& text, Items& items) {
    const auto namesCompare = [&](const DiscoveredItem& a, const DiscoveredItem& b) {
        return text.compareIgnoringCase(a.appName, b.appName);
    };
    std::stable_sort(items.begin(), items.end(),
                     [&](const DiscoveredItem& a, const DiscoveredItem& b) { return namesCompare(a, b) < 0; });

    for (auto first = items.begin(); first != items.end();) {
        const auto last =
            std::find_if(first, items.end(), [&](const DiscoveredItem& item) { return namesCompare(*first, item) != 0; });
        sortTitles(text, first, last);
        first = last;
    }
}

}  // namespace ovin
