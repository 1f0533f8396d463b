#include "discovery/ItemScan.h"

#include <algorithm>
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

std::vector<DiscoveredItem> scan(const Accessibility& accessibility, const AppInfo& app,
                                 const AccessibilityElement& application) {
    AccessibilityReader reader(accessibility);
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
    const Accessibility& accessibility = platform.accessibility;
    std::vector<ProcessID> pids;
    std::transform(apps.begin(), apps.end(), std::back_inserter(pids), [](const AppInfo& app) { return app.pid; });

    std::vector<DiscoveredItem> all;
    const auto add = [&all](std::vector<DiscoveredItem> items) {
        std::move(items.begin(), items.end(), std::back_inserter(all));
    };
    if (const auto applications = accessibility.applicationElementsToReadTogether(pids)) {
        for (std::size_t index = 0; index < apps.size(); ++index) {
            add(scan(accessibility, apps[index], (*applications)[index]));
        }
        return all;
    }
    std::vector<std::vector<DiscoveredItem>> itemsByApp(apps.size());
    platform.tasks.forEach(
        apps.size(),
        [&](std::size_t index) {
            itemsByApp[index] = scan(accessibility, apps[index], accessibility.applicationElement(pids[index]));
        },
        [&](std::size_t index) { add(std::move(itemsByApp[index])); });
    return all;
}

}  // namespace ovin
