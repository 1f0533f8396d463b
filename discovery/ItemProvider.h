#pragma once

#include <set>
#include <string>
#include <vector>

#include "discovery/AppInfo.h"
#include "discovery/DiscoveredItem.h"
#include "platform/Platform.h"

/// Finds the status items of other applications that the system is not drawing, and presses one on the user's behalf.
/// Nothing is kept between calls.
namespace ovin::ItemProvider {

/// Whether the user lets this program use the Accessibility interface; asked afresh at each call. Any thread.
[[nodiscard]] bool isTrusted(const Platform& platform);

/// Lets the system ask the user for that permission. A later `isTrusted` sees the answer. Main thread only.
void requestTrust(const Platform& platform);

/// The bundle identifiers whose applications are never scanned: the system's own menu bar items, the menu bar agent, and
/// this program.
[[nodiscard]] std::set<std::string> excludedBundleIDs(const Platform& platform);

/// The running applications that may own status items, in the system's order, background agents included. An application
/// nested in the bundle of another has the name and the icon of the outermost one, which is the one that the user knows.
[[nodiscard]] std::vector<AppInfo> snapshotApps(const Platform& platform);

/// The status items of `apps` that the system is not drawing, labelled and sorted for display. Where the menu bar's geometry
/// is not available, all are taken as undrawn but those that a bar draws by its protocol; there are none without trust.
///
/// Blocks until every application has answered or let its time run out, so it is called within a task. All applications
/// are asked at once: those that do not answer cost 0.25 s, however many they are. An application that stops answering in
/// the middle costs 0.5 s; a menu bar agent that stops costs another second. Owners that stop answering after their items
/// were found cost a second each where titles decide what is drawn. An application that answers slowly, but within 0.25 s
/// each time, is heard to the end.
[[nodiscard]] std::vector<DiscoveredItem> discoverItems(const Platform& platform, const std::vector<AppInfo>& apps);

/// Opens an item's menu, as a click on the item itself would; false, and a line in the log, when the item refused. A request
/// that found no answer in time counts as success: an application that has just opened a menu answers when it closes.
///
/// Blocks for up to 1.5 s for each of two requests, so it is called within a task.
[[nodiscard]] bool activate(const Platform& platform, const DiscoveredItem& item);

/// The same for an item's menu alone, whatever a click on the item would do; one request.
[[nodiscard]] bool showMenu(const Platform& platform, const DiscoveredItem& item);

}  // namespace ovin::ItemProvider
