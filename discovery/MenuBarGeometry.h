#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Geometry.h"
#include "platform/Platform.h"
#include "platform/ProcessInfo.h"

/// Which status items the system draws. One system process, the menu bar agent, lays out the status items of all
/// applications in slots of a window of its own; slots have a frame whether their items are drawn or not, and the items that
/// are not drawn lie over one another. A slot counts as drawn when no other slot overlaps it: overlap is the test, not the
/// position on screen.
namespace ovin::MenuBarGeometry {

/// The agent's bundle identifier, and the name by which it is known where it has none.
inline constexpr const char* agentBundleID = "com.apple.MenuBarAgent";
inline constexpr const char* agentName = "MenuBarAgent";

/// One slot of the menu bar.
struct Entry {
    /// The process that owns the item in the slot; absent when no element of another process was found under the slot.
    std::optional<ProcessID> owner;
    /// The owning application's element for the item, the one to press. Absent together with `owner`.
    std::optional<AccessibilityElement> element;
    /// The item's description or title, as `readDrawnTitles` has read it. Empty before, and when the item has none.
    std::string title;
    /// The frame of the slot, not of the owner's element. Its width is greater than 0.
    Rect frame;
    /// True when no other slot overlaps this one by more than a point horizontally.
    bool isDrawn = false;
};

/// All slots at one moment.
struct Snapshot {
    /// In the order of the agent window's children.
    std::vector<Entry> entries;
    /// The process id of this program, whose own status item does not count.
    ProcessID ownPID = 0;

    /// The entries that another process owns, in order.
    [[nodiscard]] std::vector<Entry> foreign() const;

    /// Whether every foreign entry is drawn; true when there is none.
    [[nodiscard]] bool everythingIsDrawn() const;

    /// The width in points of all entries together, own and unowned ones included, without spacing.
    [[nodiscard]] double totalItemsWidth() const;

    /// How many drawn foreign entries each process has. A process without any has no key.
    [[nodiscard]] std::map<ProcessID, int> drawnCountsByPID() const;
};

/// What came of reading the slots.
struct Reading {
    enum class Outcome {
        complete,
        /// No menu bar agent runs.
        noAgent,
        /// The user does not let this program read the agent's windows.
        notPermitted,
        /// The agent's windows could not be read to the end; they may be a moment later.
        brokenOff,
    };

    Outcome outcome = Outcome::brokenOff;
    /// Present when the reading is complete. It may hold no entries.
    std::optional<Snapshot> snapshot = {};
};

/// Reads the slots once, without titles; nothing is cached between calls.
///
/// Any thread, several at once. Blocks for as long as the requests take, up to 0.5 s for each. A single
/// request that finds no answer in time leaves out its slot, or the slot's owner; an agent that leaves two in a row
/// unanswered counts as one whose window cannot be read, a second after the first of them.
[[nodiscard]] Reading read(const Platform& platform);

/// The snapshot of such a reading.
[[nodiscard]] inline std::optional<Snapshot> snapshot(const Platform& platform) { return read(platform).snapshot; }

/// Reads the titles of the drawn entries of `owners`, and asks no other process. Any thread; blocks for as long as the
/// requests take: up to 0.5 s for each, and for two requests of an owner that has stopped answering.
void readDrawnTitles(const Platform& platform, Snapshot& snapshot, const std::set<ProcessID>& owners);

}  // namespace ovin::MenuBarGeometry
