#include "discovery/ItemOrder.h"

#include <algorithm>
#include <list>
#include <string>
#include <utility>

namespace ovin {
namespace {

auto by(std::string DiscoveredItem::*field, const Text& text) {
    return [field, &text](const DiscoveredItem& a, const DiscoveredItem& b) {
        return text.compareIgnoringCase(a.*field, b.*field) < 0;
    };
}

}  // namespace

// Names and titles are sorted one after the other, because one comparison of both would be no ordering: it would leave "a"
// and "A" undecided, and let the title decide between two items of "A". Libraries sort differently by such a comparison.
void sortForDisplay(const Text& text, std::vector<DiscoveredItem>& items) {
    std::list<DiscoveredItem> byTitle(items.begin(), items.end());
    byTitle.sort(by(&DiscoveredItem::title, text));
    std::stable_sort(items.begin(), items.end(), by(&DiscoveredItem::appName, text));
    // Each application keeps its places, which its items take in the order of their titles.
    for (DiscoveredItem& place : items) {
        const auto next = std::find_if(byTitle.begin(), byTitle.end(),
                                       [&](const DiscoveredItem& item) { return item.appName == place.appName; });
        place = std::move(*next);
        byTitle.erase(next);
    }
}

}  // namespace ovin
