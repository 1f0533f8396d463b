#include "discovery/ItemScan.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "discovery/AccessibilityReader.h"

namespace ovin {
namespace {

std::string title(AccessibilityReader& reader, const AccessibilityElement& item) {
    for (const char* attribute : {"AXTitle", "AXDescription", "AXIdentifier"}) {
        if (auto text = reader.string(item, attribute)) return *std::move(text);
    }
    return {};
}

std::vector<DiscoveredItem> scan(const Platform& platform, const AppInfo& app) {
    const Accessibility& accessibility = platform.accessibility;
    AccessibilityReader reader(accessibility);
    const AccessibilityElement application = accessibility.applicationElement(app.pid);
    accessibility.setMessagingTimeout(application, scanTimeout);
    const auto extrasMenuBar = reader.element(application, "AXExtrasMenuBar");
    if (!extrasMenuBar) return {};

    accessibility.setMessagingTimeout(*extrasMenuBar, scanTimeout);
    const auto children = reader.elements(*extrasMenuBar, "AXChildren");
    if (!children) return {};

    std::vector<DiscoveredItem> items;
    for (const AccessibilityElement& child : *children) {
        accessibility.setMessagingTimeout(child, scanTimeout);
        items.push_back({child, app.name, app.icon, title(reader, child), app.pid, app.bundleID, std::nullopt});
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
