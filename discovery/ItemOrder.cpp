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

// Names and titles are sorted one after the other, because one test for both is no ordering: between "a" and "A" nothing is
// decided, while between two items of "A" the title decides, and what a sort makes of that depends on who wrote the sort.
void sortForDisplay(const Text& text, std::vector<DiscoveredItem>& items) {
    std::list<DiscoveredItem> byTitle(items.begin(), items.end());
    byTitle.sort(by(&DiscoveredItem::title, text));
    std::stable_sort(items.begin(), items.end(), by(&DiscoveredItem::appName, text));
    // Every place keeps its application, whose items take its places in the order of their titles.
    for (DiscoveredItem& place : items) {
        const auto next = std::find_if(byTitle.begin(), byTitle.end(),
                                       [&](const DiscoveredItem& item) { return item.appName == place.appName; });
        place = std::move(*next);
        byTitle.erase(next);
    }
}

}  // namespace ovin
