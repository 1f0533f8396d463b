#pragma once

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "discovery/AppInfo.h"
#include "discovery/DiscoveredItem.h"
#include "discovery/ItemProvider.h"
#include "discovery/MenuBarGeometry.h"
#include "platform/memory/MemoryWorld.h"

namespace ovin {

/// A session with applications, their status items, and a menu bar agent that lays them out.
class MenuBarScene {
public:
    static constexpr ProcessID agentPID = 300;

    MemoryWorld world;

    /// An application without status items.
    MemoryElement launch(ProcessID pid, const std::string& name) {
        world.workspace.launch({pid, "com.example." + name, name, {}, MemoryImage::named(name)});
        return world.accessibility.launch(pid);
    }

    /// An application with one status item per title.
    std::vector<MemoryElement> launchWithItems(ProcessID pid, const std::string& name,
                                               const std::vector<std::string>& titles) {
        const MemoryElement root = launch(pid, name);
        std::vector<MemoryElement> items;
        for (const std::string& title : titles) {
            items.push_back(world.accessibility.makeElement(pid));
            items.back().set("AXTitle", {title});
        }
        setItems(root, items);
        return items;
    }

    void setItems(const MemoryElement& root, const std::vector<MemoryElement>& items) {
        const MemoryElement extrasMenuBar = world.accessibility.makeElement(root.owner());
        extrasMenuBar.setChildren(items);
        root.set("AXExtrasMenuBar", {extrasMenuBar.element()});
    }

    /// The menu bar agent with one empty window.
    void launchAgent() {
        world.workspace.launch({agentPID, "com.apple.MenuBarAgent", "MenuBarAgent", {}, {}});
        agent_ = world.accessibility.launch(agentPID);
        window_ = world.accessibility.makeElement(agentPID);
        window_->setChildren({});
        setWindows({*window_});
    }

    void setWindows(const std::vector<MemoryElement>& windows) {
        AttributeValue::Array array;
        for (const MemoryElement& window : windows) array.push_back({window.element()});
        agent_->set("AXWindows", {std::move(array)});
    }

    /// A slot of the agent's window at `x`, which shows an item or is empty.
    MemoryElement addSlot(double x, double width, const std::optional<MemoryElement>& shown = std::nullopt) {
        return addSlot(Rect{{x, 0}, {width, 24}}, shown);
    }

    MemoryElement addSlot(const Rect& frame, const std::optional<MemoryElement>& shown = std::nullopt) {
        const MemoryElement slot = world.accessibility.makeElement(agentPID);
        slot.setFrame(frame);
        if (shown) slot.setChildren({*shown});
        slots_.push_back(slot);
        window_->setChildren(slots_);
        return slot;
    }

    /// Lays the items out from left to right, all drawn.
    void draw(const std::vector<MemoryElement>& items) {
        for (const MemoryElement& item : items) {
            addSlot(nextX_, 30, item);
            nextX_ += 30;
        }
    }

    /// Piles the items up at one place, as the menu bar does with items that it does not draw.
    void hide(const std::vector<MemoryElement>& items) {
        for (const MemoryElement& item : items) addSlot(-100, 30, item);
        if (items.size() == 1) addSlot(-100, 30);
    }

    [[nodiscard]] const MemoryElement& agent() const { return *agent_; }
    [[nodiscard]] const MemoryElement& window() const { return *window_; }

    [[nodiscard]] std::optional<MenuBarGeometry::Snapshot> snapshot() { return MenuBarGeometry::snapshot(world.platform()); }

    /// With the titles of all drawn items.
    [[nodiscard]] std::optional<MenuBarGeometry::Snapshot> snapshotWithTitles() {
        auto result = snapshot();
        if (!result) return result;
        std::set<ProcessID> owners;
        for (const auto& entry : result->foreign()) owners.insert(*entry.owner);
        MenuBarGeometry::readDrawnTitles(world.platform(), *result, std::move(owners));
        return result;
    }

    [[nodiscard]] std::vector<DiscoveredItem> discover() {
        return ItemProvider::discoverItems(world.platform(), ItemProvider::snapshotApps(world.platform()));
    }

private:
    std::optional<MemoryElement> agent_;
    std::optional<MemoryElement> window_;
    std::vector<MemoryElement> slots_;
    double nextX_ = 1000;
};

[[nodiscard]] inline std::vector<std::string> titles(const std::vector<DiscoveredItem>& items) {
    std::vector<std::string> result;
    for (const DiscoveredItem& item : items) result.push_back(item.title);
    return result;
}

[[nodiscard]] inline std::vector<std::optional<std::string>> labels(const std::vector<DiscoveredItem>& items) {
    std::vector<std::optional<std::string>> result;
    for (const DiscoveredItem& item : items) result.push_back(item.label);
    return result;
}

}  // namespace ovin
