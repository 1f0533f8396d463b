#include "discovery/ItemScan.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "discovery/AccessibilityReaders.h"

namespace ovin {
namespace {

/// An application that gives no title for an item in this time has stopped answering in the middle of the scan: letting each
/// of its other items run out of time as well would hold everybody up for seconds. They keep an empty title.
constexpr auto patience = 2 * scanTimeout;

/// The answers of one application.
struct AppScan {
    std::vector<DiscoveredItem> items;
    bool isSilent = false;
};

std::string title(const Accessibility& accessibility, const AccessibilityElement& item) {
    for (const char* attribute : {"AXTitle", "AXDescription", "AXIdentifier"}) {
        if (auto text = string(accessibility, item, attribute)) return *std::move(text);
    }
    return {};
}

AppScan scan(const Platform& platform, const AppInfo& app) {
    const Accessibility& accessibility = platform.accessibility;
    const AccessibilityElement application = accessibility.applicationElement(app.pid);
    accessibility.setMessagingTimeout(application, scanTimeout);
    const AttributeAnswer answer = accessibility.copyAttributeValue(application, "AXExtrasMenuBar");
    if (answer.error != AccessibilityError::success) {
        return {{}, answer.error == AccessibilityError::cannotComplete};
    }
    const auto* extrasMenuBar = std::get_if<AccessibilityElement>(&answer.value.content);
    if (extrasMenuBar == nullptr) return {};

    accessibility.setMessagingTimeout(*extrasMenuBar, scanTimeout);
    const auto children = elements(accessibility, *extrasMenuBar, "AXChildren");
    if (!children) return {};

    AppScan result;
    bool hasStoppedAnswering = false;
    for (const AccessibilityElement& child : *children) {
        DiscoveredItem item{child, app.name, app.icon, {}, app.pid, app.bundleID, std::nullopt};
        if (!hasStoppedAnswering) {
            const auto start = platform.clock.now();
            accessibility.setMessagingTimeout(child, scanTimeout);
            item.title = title(accessibility, child);
            hasStoppedAnswering = item.title.empty() && platform.clock.now() - start > patience;
        }
        result.items.push_back(std::move(item));
    }
    return result;
}

}  // namespace

ScannedItems scanItems(const Platform& platform, const std::vector<AppInfo>& apps) {
    ScannedItems scanned;
    std::vector<AppScan> scans(apps.size());
    platform.tasks.forEach(
        apps.size(), [&](std::size_t index) { scans[index] = scan(platform, apps[index]); },
        [&](std::size_t index) {
            std::vector<DiscoveredItem>& items = scans[index].items;
            std::move(items.begin(), items.end(), std::back_inserter(scanned.items));
            if (scans[index].isSilent) scanned.silentOwners.insert(apps[index].pid);
        });
    return scanned;
}

}  // namespace ovin
