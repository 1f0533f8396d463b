#include "discovery/MenuBarGeometry.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

#include "discovery/AccessibilityReader.h"

namespace ovin::MenuBarGeometry {
namespace {

using Elements = std::vector<AccessibilityElement>;

constexpr std::chrono::milliseconds messagingTimeout{500};

/// How far below a slot its owner's element may be: the slot, its children and its grandchildren are looked at.
constexpr int ownerSearchDepth = 2;

/// Slots that overlap by up to this many points are neighbours whose edges were rounded.
constexpr double toleratedOverlap = 1.0;

std::optional<ProcessID> findAgent(const Workspace& workspace) {
    for (const RunningApplication& application : workspace.runningApplications()) {
        if (application.bundleIdentifier == agentBundleID || application.localizedName == agentName) {
            return application.pid;
        }
    }
    return std::nullopt;
}

/// The area of a window that can be seen on the display. A window that is there but has no height still counts by its width.
double visibleArea(const Accessibility& accessibility, AccessibilityReader& reader, const AccessibilityElement& window,
                   const Rect& display) {
    accessibility.setMessagingTimeout(window, messagingTimeout);
    const auto windowFrame = reader.frame(window);
    if (!windowFrame) return 0;
    const auto visible = intersection(*windowFrame, display);
    if (!visible) return 0;
    return visible->size.width * std::max(visible->size.height, 1.0);
}

/// The agent keeps one window per display. The menu bar to look at is the window with the largest visible area on the main
/// display; of equal windows, the earlier. Each comparison measures both windows anew, because they move while displays
/// change.
const AccessibilityElement& menuBarWindow(const Platform& platform, AccessibilityReader& reader, const Elements& windows) {
    if (windows.size() == 1) return windows.front();
    const Rect display = platform.displays.bounds(platform.displays.mainDisplay());
    const AccessibilityElement* best = &windows.front();
    for (std::size_t i = 1; i < windows.size(); ++i) {
        const double bestArea = visibleArea(platform.accessibility, reader, *best, display);
        const double area = visibleArea(platform.accessibility, reader, windows[i], display);
        if (bestArea < area) best = &windows[i];
    }
    return *best;
}

struct OwnedElement {
    ProcessID pid;
    AccessibilityElement element;
};

/// The first element at or under `element`, depth first, that belongs to another process than the agent.
std::optional<OwnedElement> foreignElement(const Accessibility& accessibility, AccessibilityReader& reader,
                                           const AccessibilityElement& element, ProcessID agentPID, int depth) {
    const ProcessIDAnswer owner = accessibility.processIdentifier(element);
    if (owner.error == AccessibilityError::success && owner.pid != agentPID) return OwnedElement{owner.pid, element};
    if (depth == 0) return std::nullopt;

    const auto children = reader.elements(element, "AXChildren");
    if (!children) return std::nullopt;
    for (const AccessibilityElement& child : *children) {
        if (auto found = foreignElement(accessibility, reader, child, agentPID, depth - 1)) return found;
    }
    return std::nullopt;
}

std::string itemTitle(AccessibilityReader& reader, const AccessibilityElement& element) {
    if (auto description = reader.string(element, "AXDescription")) return *std::move(description);
    return reader.string(element, "AXTitle").value_or("");
}

/// The slot as an entry of which only `title` and `isDrawn` are not known yet; nothing for a slot without a frame or a
/// width.
std::optional<Entry> readSlot(const Accessibility& accessibility, AccessibilityReader& reader,
                              const AccessibilityElement& slot, ProcessID agentPID) {
    accessibility.setMessagingTimeout(slot, messagingTimeout);
    const auto slotFrame = reader.frame(slot);
    if (!slotFrame || !(slotFrame->size.width > 0)) return std::nullopt;

    Entry entry;
    entry.frame = *slotFrame;
    if (auto found = foreignElement(accessibility, reader, slot, agentPID, ownerSearchDepth)) {
        entry.owner = found->pid;
        entry.element = std::move(found->element);
    }
    return entry;
}

/// Rounds toward zero. A number that no integer holds, as an agent may say anything, becomes a large integer.
std::int64_t truncated(double value) {
    constexpr double limit = 0x1p62;
    return static_cast<std::int64_t>(std::fmax(-limit, std::fmin(value, limit)));
}

void logFrames(const Platform& platform, std::vector<Entry> entries) {
    // `<` is no ordering where a value is not a number.
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return std::weak_order(a.frame.origin.x, b.frame.origin.x) < 0; });

    std::map<ProcessID, std::string> names;
    for (const RunningApplication& application : platform.workspace.runningApplications()) {
        if (application.localizedName) names.emplace(application.pid, *application.localizedName);
    }
    const auto name = [&names](const Entry& entry) -> std::string {
        const auto found = entry.owner ? names.find(*entry.owner) : names.end();
        return found == names.end() ? "agent" : found->second;
    };

    std::string line = "Ovin DEBUG frames: ";
    const char* separator = "";
    for (const Entry& entry : entries) {
        line += separator;
        line += name(entry);
        line += "@" + std::to_string(truncated(entry.frame.origin.x));
        line += "+" + std::to_string(truncated(entry.frame.size.width));
        separator = " ";
    }
    platform.log.write(line);
}

bool overlaps(const Rect& a, const Rect& b) {
    const auto common = intersection(a, b);
    return common && common->size.width > toleratedOverlap;
}

/// Goes through the slots from left to right. Each is compared only with the one of every row (slots at one height) that
/// reaches farthest to the right so far. Another slot of that row needs no comparison: what overlaps it from further right
/// overlaps the farthest too, and the farthest overlaps that other slot.
void markDrawn(std::vector<Entry>& entries) {
    std::vector<Entry*> fromLeft;
    for (Entry& entry : entries) {
        entry.isDrawn = true;
        // A frame with an edge that is not a number overlaps none.
        if (hasEdges(entry.frame)) fromLeft.push_back(&entry);
    }
    std::sort(fromLeft.begin(), fromLeft.end(),
              [](const Entry* a, const Entry* b) { return a->frame.origin.x < b->frame.origin.x; });

    std::map<std::pair<double, double>, Entry*> farthest;
    for (Entry* entry : fromLeft) {
        for (const auto& [row, other] : farthest) {
            if (overlaps(other->frame, entry->frame)) other->isDrawn = entry->isDrawn = false;
        }
        Entry*& own = farthest.try_emplace({entry->frame.origin.y, entry->frame.size.height}, entry).first->second;
        if (right(own->frame) < right(entry->frame)) own = entry;
    }
}

}  // namespace

std::vector<Entry> Snapshot::foreign() const {
    std::vector<Entry> result;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(result),
                 [this](const Entry& entry) { return entry.owner && *entry.owner != ownPID; });
    return result;
}

bool Snapshot::everythingIsDrawn() const {
    const auto others = foreign();
    return std::all_of(others.begin(), others.end(), [](const Entry& entry) { return entry.isDrawn; });
}

double Snapshot::totalItemsWidth() const {
    double width = 0;
    for (const Entry& entry : entries) width += entry.frame.size.width;
    return width;
}

std::map<ProcessID, int> Snapshot::drawnCountsByPID() const {
    std::map<ProcessID, int> counts;
    for (const Entry& entry : foreign()) {
        if (entry.isDrawn) ++counts[*entry.owner];
    }
    return counts;
}

Reading read(const Platform& platform) {
    const Accessibility& accessibility = platform.accessibility;
    if (!accessibility.isProcessTrusted()) return {Reading::Outcome::notPermitted};
    const auto agentPID = findAgent(platform.workspace);
    if (!agentPID) return {Reading::Outcome::noAgent};

    AccessibilityReader reader(accessibility);
    const AccessibilityElement agent = accessibility.applicationElement(*agentPID);
    accessibility.setMessagingTimeout(agent, messagingTimeout);
    const auto windows = reader.elements(agent, "AXWindows");
    if (reader.isRefused()) return {Reading::Outcome::notPermitted};
    if (!windows || windows->empty()) return {};

    const AccessibilityElement& window = menuBarWindow(platform, reader, *windows);
    accessibility.setMessagingTimeout(window, messagingTimeout);
    const auto slots = reader.elements(window, "AXChildren");
    if (!slots) return {};

    Snapshot result{{}, platform.process.processIdentifier()};
    for (const AccessibilityElement& slot : *slots) {
        if (auto entry = readSlot(accessibility, reader, slot, *agentPID)) result.entries.push_back(*std::move(entry));
    }
    // An agent that fell silent leaves out more than a slot: drawn items would count as undrawn.
    if (reader.hasFallenSilent()) return {};
    if (platform.process.environment("OVIN_DEBUG_FRAMES")) logFrames(platform, result.entries);
    markDrawn(result.entries);
    return {Reading::Outcome::complete, std::move(result)};
}

void readDrawnTitles(const Platform& platform, Snapshot& snapshot, const std::set<ProcessID>& owners) {
    std::map<ProcessID, AccessibilityReader> readers;
    for (Entry& entry : snapshot.entries) {
        if (!entry.isDrawn || !entry.owner || !owners.contains(*entry.owner)) continue;
        AccessibilityReader& reader = readers.try_emplace(*entry.owner, platform.accessibility).first->second;
        entry.title = itemTitle(reader, *entry.element);
    }
}

}  // namespace ovin::MenuBarGeometry
