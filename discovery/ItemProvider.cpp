#include "discovery/ItemProvider.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <locale>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

#include "discovery/ItemLabels.h"
#include "discovery/ItemMatching.h"
#include "discovery/ItemOrder.h"
#include "discovery/ItemScan.h"
#include "discovery/MenuBarGeometry.h"
#include "discovery/OuterBundlePath.h"

namespace ovin::ItemProvider {
namespace {

constexpr std::chrono::milliseconds pressTimeout{1500};
constexpr std::string_view bundleExtension = ".app";

AppInfo appInfo(const Workspace& workspace, const RunningApplication& application) {
    AppInfo info{application.pid, application.bundleIdentifier, {}, {}};
    if (const auto path = outerBundlePath(application)) {
        info.name = workspace.displayName(*path);
        if (info.name.ends_with(bundleExtension)) info.name.resize(info.name.size() - bundleExtension.size());
        info.icon = workspace.icon(*path);
    } else {
        info.name = application.localizedName.value_or(application.bundleIdentifier.value_or("Unknown"));
        info.icon = application.icon;
    }
    return info;
}

/// One line for a bug report; `line` is put together only where the environment asks for it.
template <typename Line>
void logDebug(const Platform& platform, const Line& line) {
    if (platform.process.environment("OVIN_DEBUG")) platform.log.write(line());
}

/// Tells, for a bug report, whether the Accessibility interface works at all: every Mac has a Finder to ask.
std::int32_t probeFinder(const Platform& platform) {
    for (const RunningApplication& application : platform.workspace.runningApplications()) {
        if (application.bundleIdentifier != "com.apple.finder") continue;
        const auto element = platform.accessibility.applicationElement(application.pid);
        platform.accessibility.setMessagingTimeout(element, scanTimeout);
        return static_cast<std::int32_t>(platform.accessibility.copyAttributeValue(element, "AXRole").error);
    }
    return -1;
}

/// Seconds with two decimals and a point, whatever the locale.
std::string formattedSeconds(std::chrono::nanoseconds duration) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::fixed << std::setprecision(2) << std::chrono::duration<double>(duration).count();
    return stream.str();
}

std::string undrawnLine(const std::vector<DiscoveredItem>& items, std::chrono::nanoseconds elapsed) {
    std::string line =
        "Ovin DEBUG discovery: " + std::to_string(items.size()) + " undrawn items, " + formattedSeconds(elapsed) + "s: ";
    const char* separator = "";
    for (const DiscoveredItem& item : items) {
        line += separator;
        line += item.appName;
        separator = ", ";
    }
    return line;
}

std::set<ProcessID> owners(const std::vector<DiscoveredItem>& items) {
    std::set<ProcessID> pids;
    for (const DiscoveredItem& item : items) pids.insert(item.ownerPID);
    return pids;
}

/// Removes the items that the system is drawing from `items`; leaves all of them when that cannot be known.
void removeDrawnItems(const Platform& platform, std::vector<DiscoveredItem>& items, std::size_t appCount) {
    const auto found = [appCount, itemCount = items.size()] {
        return "Ovin DEBUG discovery: " + std::to_string(itemCount) + " items from " + std::to_string(appCount) + " apps; ";
    };
    auto snapshot = MenuBarGeometry::snapshot(platform);
    if (!snapshot) {
        std::erase_if(items, [&](const auto& item) { return platform.accessibility.isDrawnByProtocol(item.element); });
        return logDebug(platform, [&] { return found() + "geometry unavailable"; });
    }

    const auto foreign = snapshot->foreign();
    const MatchingMode mode = matchingMode(items, foreign);
    // Only of applications that have answered: asking every owner in the bar would take longer than the rest of the
    // discovery, and seconds where one owner hangs.
    if (mode == MatchingMode::perAppCount) MenuBarGeometry::readDrawnTitles(platform, *snapshot, owners(items));
    removeDrawn(items, *snapshot, mode);
    logDebug(platform, [&] {
        return found() + std::to_string(foreign.size()) + " containers; matching by " +
               (mode == MatchingMode::element ? "element" : "per-app count");
    });
}

bool perform(const Platform& platform, const DiscoveredItem& item, std::string_view action) {
    platform.accessibility.setMessagingTimeout(item.element, pressTimeout);
    const AccessibilityError error = platform.accessibility.performAction(item.element, action);
    return error == AccessibilityError::success || error == AccessibilityError::cannotComplete;
}

/// Always false.
bool reject(const Platform& platform, const DiscoveredItem& item, const std::string& actions) {
    platform.log.write("Ovin: " + item.appName + " — " + item.title + " rejected " + actions);
    return false;
}

}  // namespace

bool isTrusted(const Platform& platform) { return platform.accessibility.isProcessTrusted(); }

void requestTrust(const Platform& platform) { platform.accessibility.promptForTrust(); }

std::set<std::string> excludedBundleIDs(const Platform& platform) {
    return {"com.apple.controlcenter", "com.apple.systemuiserver", MenuBarGeometry::agentBundleID,
            platform.process.bundleIdentifier()};
}

std::vector<AppInfo> snapshotApps(const Platform& platform) {
    const auto excluded = excludedBundleIDs(platform);
    std::vector<AppInfo> apps;
    for (const RunningApplication& application : platform.workspace.runningApplications()) {
        if (application.bundleIdentifier && excluded.contains(*application.bundleIdentifier)) continue;
        if (application.localizedName == MenuBarGeometry::agentName) continue;
        apps.push_back(appInfo(platform.workspace, application));
    }
    return apps;
}

std::vector<DiscoveredItem> discoverItems(const Platform& platform, const std::vector<AppInfo>& apps) {
    const bool trusted = isTrusted(platform);
    logDebug(platform, [&] {
        return "Ovin DEBUG AX: trusted=" + std::to_string(trusted ? 1 : 0) + ", probe of Finder returned AXError " +
               std::to_string(probeFinder(platform));
    });
    if (!trusted) return {};

    const auto start = platform.clock.now();
    std::vector<DiscoveredItem> undrawn = scanItems(platform, apps);
    removeDrawnItems(platform, undrawn, apps.size());
    addLabels(platform.text, undrawn);
    logDebug(platform, [&] { return undrawnLine(undrawn, platform.clock.now() - start); });
    sortForDisplay(platform.text, undrawn);
    return undrawn;
}

bool activate(const Platform& platform, const DiscoveredItem& item) {
    return perform(platform, item, "AXPress") || perform(platform, item, "AXShowMenu") ||
           reject(platform, item, "AXPress and AXShowMenu");
}

bool showMenu(const Platform& platform, const DiscoveredItem& item) {
    return perform(platform, item, "AXShowMenu") || reject(platform, item, "AXShowMenu");
}

}  // namespace ovin::ItemProvider
