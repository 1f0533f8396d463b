#include "platform/linux/items/StatusNotifierItems.h"

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <mutex>
#include <set>

#include "platform/linux/items/ItemProperties.h"
#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

constexpr std::chrono::seconds patience{1};
/// A thousand items take seconds to arrive on a busy machine; a longer stream is not waited for.
constexpr std::chrono::seconds longestStream{10};
constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

}  // namespace

/// Shared with the handlers of the bus, which may still run while the owner is destroyed.
struct StatusNotifierItems::State : std::enable_shared_from_this<State> {
    explicit State(Bus& aBus) : bus(aBus) {}

    Bus& bus;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::vector<StatusNotifierItem> items;
    /// The addresses of items whose process is being asked for.
    std::set<std::string> pending;
    bool isListed = false;

    /// Asks the watcher for its list of items.
    void load() {
        bus.call(propertyCall(watcherName, watcherPath, watcherName, "RegisteredStatusNotifierItems"), Bus::untilAnswered,
                 [self = shared_from_this()](const BusReply& reply) {
                     const BusValue addresses = reply.first();
                     for (const BusValue& address : addresses.members()) self->add(address.string());
                     const std::lock_guard lock(self->mutex);
                     self->isListed = true;
                     self->changed.notify_all();
                 });
    }

    void add(const std::string& address) {
        const auto parsed = statusItemAddress(address, {});
        if (!parsed) return;
        const StatusNotifierItem item{*parsed};
        {
            const std::lock_guard lock(mutex);
            pending.insert(item.address.joined());
        }
        bus.call(busDaemonCall("GetConnectionUnixProcessID", {item.address.destination}), Bus::untilAnswered,
                 [self = shared_from_this(), item](const BusReply& reply) { self->resolve(item, reply); });
    }

    /// An item that was unregistered while its process was asked for is no longer pending. An item that is already known was
    /// registered again, perhaps by another process: a program restarted under the same name.
    void resolve(StatusNotifierItem item, const BusReply& reply) {
        const std::lock_guard lock(mutex);
        const bool isStillThere = pending.erase(item.address.joined()) > 0;
        changed.notify_all();  // waiting threads go on only when this function has unlocked
        if (!isStillThere || reply.isError()) return;
        item.pid = static_cast<ProcessID>(reply.first().integer());
        const auto known = find(item.address);
        if (known != items.end() && *known == item) return;
        if (known != items.end()) forget(known);
        items.push_back(item);
        readFirstIcon(item.pid);
    }

    /// An application shows one icon: that of its first item.
    void readFirstIcon(ProcessID pid) {
        const auto first =
            std::find_if(items.begin(), items.end(), [pid](const StatusNotifierItem& item) { return item.pid == pid; });
        if (first == items.end() || first->icon) return;
        first->icon = std::make_shared<LatestItemIcon>();
        // Listing items reads texts and pictures anew; this icon serves until then.
        static_cast<void>(ItemProperties::request(bus, *first));
    }

    void forget(std::vector<StatusNotifierItem>::iterator item) {
        const ProcessID pid = item->pid;
        items.erase(item);
        readFirstIcon(pid);
    }

    void remove(const std::string& address) {
        const auto parsed = statusItemAddress(address, {});
        if (!parsed) return;
        const std::lock_guard lock(mutex);
        pending.erase(parsed->joined());
        const auto known = find(*parsed);
        if (known != items.end()) forget(known);
    }

    void clear() {
        const std::lock_guard lock(mutex);
        pending.clear();
        items.clear();
    }

    [[nodiscard]] std::vector<StatusNotifierItem>::iterator find(const StatusItemAddress& address) {
        return std::find_if(items.begin(), items.end(),
                            [&](const StatusNotifierItem& item) { return item.address == address; });
    }
};

StatusNotifierItems::StatusNotifierItems(Bus& bus) : state_(std::make_shared<State>(bus)) {
    bus.watchOwner(watcherName, [state = state_](const BusSignal& signal) {
        state->clear();
        if (signal.values.size() >= 3 && !signal.values[2].string().empty()) state->load();
    });
    bus.watch(watcherName, std::string("interface='") + watcherName + "',path='" + watcherPath + "'",
              [state = state_](const BusSignal& signal) {
                  if (signal.values.empty()) return;
                  if (signal.member == "StatusNotifierItemRegistered") state->add(signal.values[0].string());
                  if (signal.member == "StatusNotifierItemUnregistered") state->remove(signal.values[0].string());
              });
    state_->load();

    std::unique_lock lock(state_->mutex);
    state_->changed.wait_for(lock, patience, [this] { return state_->isListed && state_->pending.empty(); });
}

void StatusNotifierItems::waitFor(const std::vector<std::string>& addresses) const {
    const auto isKnown = [this](const std::string& address) {
        const auto parsed = statusItemAddress(address, {});
        return parsed && state_->find(*parsed) != state_->items.end();
    };
    const auto deadline = std::chrono::steady_clock::now() + longestStream;
    std::unique_lock lock(state_->mutex);
    // Items arrive in the order of `addresses`, so each search starts at the one that was missing last.
    auto missing = addresses.begin();
    const auto areKnown = [&] {
        missing = std::find_if_not(missing, addresses.end(), isKnown);
        return missing == addresses.end() && state_->isListed && state_->pending.empty();
    };
    while (!areKnown()) {
        const auto until = std::min(deadline, std::chrono::steady_clock::now() + patience);
        if (state_->changed.wait_until(lock, until) == std::cv_status::timeout) return;
    }
}

std::vector<StatusNotifierItem> StatusNotifierItems::itemsOf(ProcessID pid) const {
    const std::lock_guard lock(state_->mutex);
    std::vector<StatusNotifierItem> result;
    std::copy_if(state_->items.begin(), state_->items.end(), std::back_inserter(result),
                 [pid](const StatusNotifierItem& item) { return item.pid == pid; });
    return result;
}

std::optional<StatusNotifierItem> StatusNotifierItems::itemAt(const std::string& address) const {
    const auto parsed = statusItemAddress(address, {});
    return parsed ? itemAt(*parsed) : std::nullopt;
}

std::optional<StatusNotifierItem> StatusNotifierItems::itemAt(const StatusItemAddress& address) const {
    const std::lock_guard lock(state_->mutex);
    const auto found = state_->find(address);
    if (found == state_->items.end()) return std::nullopt;
    return *found;
}

}  // namespace ovin
