#include "discovery/ItemScan.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "discovery/AccessibilityReaders.h"

namespace ovin {
namespace {

/// An application that lets two requests for one item run out of time has stopped answering in the middle of the scan:
/// letting those for its other items run out as well would hold everybody up for seconds. They keep an empty title.
constexpr auto patience = 2 * scanTimeout;

std::string title(const Accessibility& accessibility, const AccessibilityElement& item) {
    for (const char* attribute : {"AXTitle", "AXDescription", "AXIdentifier"}) {
        if (auto text = AccessibilityReaders::string(accessibility, item, attribute)) return *std::move(text);
    }
    return {};
}

std::vector<DiscoveredItem> scan(const Platform& platform, const AppInfo& app) {
    const Accessibility& accessibility = platform.accessibility;
    const AccessibilityElement application = accessibility.applicationElement(app.pid);
    accessibility.setMessagingTimeout(application, scanTimeout);
    const auto extrasMenuBar = AccessibilityReaders::element(accessibility, application, "AXExtrasMenuBar");
    if (!extrasMenuBar) return {};

    accessibility.setMessagingTimeout(*extrasMenuBar, scanTimeout);
    const auto children = AccessibilityReaders::elements(accessibility, *extrasMenuBar, "AXChildren");
    if (!children) return {};

    std::vector<DiscoveredItem> items;
    bool hasStoppedAnswering = false;
    for (const AccessibilityElement& child : *children) {
        DiscoveredItem item{child, app.name, app.icon, {}, app.pid, app.bundleID, std::nullopt};
        if (!hasStoppedAnswering) {
            const auto start = platform.clock.now();
            accessibility.setMessagingTimeout(child, scanTimeout);
            item.title = title(accessibility, child);
            hasStoppedAnswering = platform.clock.now() - start >= patience;
        }
        items.push_back(std::move(item));
    }
    return items;
}

}  // namespace

std::vector<DiscoveredItem> scanItems(const Platform& platform, const std::vector<AppInfo>& apps) {
    std::vector<std::vector<DiscoveredItem>> itemsByApp(apps.size());
    std::vector<DiscoveredItem> all;
    platform.tasks.forEach(
        apps.size(), [&](std::size_t index) { itemsByApp[index] = scan(platform, apps[index]); },
        [&](std::size_t index) { std::move(itemsByApp[index].begin(), itemsByApp[index].end(), std::back_inserter(all)); });
    return all;
}

}  // namespace ovin
