#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/ProcessInfo.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/items/StatusItemAddress.h"
#include "platform/linux/system/Bus.h"

namespace ovin {

/// What an item has told of itself that decides whether a bar draws it and what a click on it does.
struct StatusItemTraits {
    /// Which of its two names the item's interface has.
    std::string interface;
    std::string id;
    /// Whether the item asks bars to hide it.
    bool isPassive = false;
    /// The path of the item's menu; nothing when it says that it has none.
    std::optional<std::string> menu;
    /// The property `ItemIsMenu`; nothing when the item does not have it.
    std::optional<bool> isMenu;
};

/// The traits of an item as they were read last. Any thread.
class LatestTraits {
public:
    void set(StatusItemTraits traits) {
        const std::lock_guard lock(mutex_);
        traits_ = std::move(traits);
    }

    /// Nothing before the first answer.
    [[nodiscard]] std::optional<StatusItemTraits> get() const {
        const std::lock_guard lock(mutex_);
        return traits_;
    }

private:
    mutable std::mutex mutex_;
    std::optional<StatusItemTraits> traits_;
};

/// A status item on the session bus, and the process behind it.
struct StatusNotifierItem {
    StatusItemAddress address;
    ProcessID pid = 0;
    /// So that an item whose program hangs stays what it was. Never null.
    std::shared_ptr<LatestTraits> traits = std::make_shared<LatestTraits>();
    /// The icon as it was read last: when the item registered or when its texts were read. Only the first item of a process
    /// keeps one; null for the others.
    std::shared_ptr<LatestItemIcon> icon = {};

    friend bool operator==(const StatusNotifierItem& a, const StatusNotifierItem& b) {
        return a.address == b.address && a.pid == b.pid;
    }
};

/// The status items that are registered with the session's StatusNotifierWatcher, kept up to date by its signals; none while
/// there is no watcher. Any thread.
class StatusNotifierItems {
public:
    /// Returns when all items registered now are known, or after a second. `bus` must outlive this object.
    explicit StatusNotifierItems(Bus& bus);

    /// Returns when the items at `addresses`, and all others that the watcher has told of, are known. Gives up when none has
    /// come for a second, and after ten.
    void waitFor(const std::vector<std::string>& addresses) const;

    /// The items of a process, in the order of their registration.
    [[nodiscard]] std::vector<StatusNotifierItem> itemsOf(ProcessID pid) const;

    /// The item at an address; the text is an address as the watcher lists it.
    [[nodiscard]] std::optional<StatusNotifierItem> itemAt(const StatusItemAddress& address) const;
    [[nodiscard]] std::optional<StatusNotifierItem> itemAt(const std::string& address) const;

private:
    struct State;

    std::shared_ptr<State> state_;
};

}  // namespace ovin
