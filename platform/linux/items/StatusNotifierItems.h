#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ProcessInfo.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/items/StatusItemAddress.h"
#include "platform/linux/system/Bus.h"

namespace ovin {

/// A status item on the session bus, and the process behind it.
struct StatusNotifierItem {
    StatusItemAddress address;
    ProcessID pid = 0;
    /// The icon as it was read last. Only the first item of a process keeps one; null for the others.
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

    /// The icon of the first item of a process as it was read last; null when there is none. Never blocks: icons are read
    /// when items register and whenever their texts are read.
    [[nodiscard]] std::shared_ptr<const ItemIcon> iconOf(ProcessID pid) const;

    /// The item at an address; the text is an address as the watcher lists it.
    [[nodiscard]] std::optional<StatusNotifierItem> itemAt(const StatusItemAddress& address) const;
    [[nodiscard]] std::optional<StatusNotifierItem> itemAt(const std::string& address) const;

private:
    struct State;

    std::shared_ptr<State> state_;
};

}  // namespace ovin
