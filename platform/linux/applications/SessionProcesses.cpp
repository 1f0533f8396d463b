#include "platform/linux/applications/SessionProcesses.h"

#include <algorithm>
#include <charconv>
#include <condition_variable>
#include <set>

#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

constexpr std::chrono::seconds patience{1};

/// Unique names count up: ":1.9" connected before ":1.10".
std::uint64_t connectionNumber(const std::string& uniqueName) {
    std::uint64_t number = 0;
    const std::size_t start = uniqueName.rfind('.') + 1;
    std::from_chars(uniqueName.data() + start, uniqueName.data() + uniqueName.size(), number);
    return number;
}

}  // namespace

/// Shared with the handlers of the bus, which may still run while the owner is destroyed.
struct SessionProcesses::State {
    mutable std::mutex mutex;
    std::condition_variable changed;
    /// By connection number; a process may have several connections.
    std::map<std::uint64_t, ProcessID> pids;
    /// Connections whose process is being asked for.
    std::set<std::uint64_t> pending;
    bool isListed = false;
    std::vector<std::function<void()>> observers;

    void notify() const {
        std::vector<std::function<void()>> copy;
        {
            const std::lock_guard lock(mutex);
            copy = observers;
        }
        for (const auto& observer : copy) observer();
    }

    void begin(std::uint64_t connection) {
        const std::lock_guard lock(mutex);
        pending.insert(connection);
    }

    [[nodiscard]] bool isConnected(ProcessID pid) const {
        return std::any_of(pids.begin(), pids.end(), [pid](const auto& known) { return known.second == pid; });
    }

    /// Returns whether the reply makes a process known. A connection that closed before the reply is no longer pending.
    bool resolve(std::uint64_t connection, const BusReply& reply) {
        const std::lock_guard lock(mutex);
        changed.notify_all();
        if (pending.erase(connection) == 0 || reply.isError()) return false;
        const auto pid = static_cast<ProcessID>(reply.first().integer());
        const bool isNew = !isConnected(pid);
        pids[connection] = pid;
        return isNew;
    }

    /// Returns whether this was the last connection of a process.
    bool remove(std::uint64_t connection) {
        const std::lock_guard lock(mutex);
        pending.erase(connection);
        const auto gone = pids.extract(connection);
        return !gone.empty() && !isConnected(gone.mapped());
    }

    void setListed() {
        const std::lock_guard lock(mutex);
        isListed = true;
        changed.notify_all();
    }
};

SessionProcesses::SessionProcesses(Bus& bus) : state_(std::make_shared<State>()) {
    const auto add = [&bus, state = state_](const std::string& name) {
        const std::uint64_t connection = connectionNumber(name);
        state->begin(connection);
        bus.call(busDaemonCall("GetConnectionUnixProcessID", {name}), Bus::untilAnswered,
                 [state, connection](const BusReply& reply) {
                     if (state->resolve(connection, reply)) state->notify();
                 });
    };

    bus.watchOwner({}, [state = state_, add](const BusSignal& signal) {
        if (signal.values.size() < 3) return;
        const std::string name = signal.values[0].string();
        if (!isUniqueName(name)) return;
        const bool hasGone = signal.values[2].string().empty();
        if (!hasGone) return add(name);
        if (state->remove(connectionNumber(name))) state->notify();
    });
    bus.call(busDaemonCall("ListNames"), Bus::untilAnswered, [state = state_, add](const BusReply& reply) {
        const BusValue names = reply.first();
        for (const BusValue& name : names.members()) {
            if (isUniqueName(name.string())) add(name.string());
        }
        state->setListed();
    });

    std::unique_lock lock(state_->mutex);
    state_->changed.wait_for(lock, patience, [this] { return state_->isListed && state_->pending.empty(); });
}

void SessionProcesses::observe(std::function<void()> handler) {
    const std::lock_guard lock(state_->mutex);
    state_->observers.push_back(std::move(handler));
}

std::vector<ProcessID> SessionProcesses::processes() const {
    const std::lock_guard lock(state_->mutex);
    std::vector<ProcessID> result;
    for (const auto& [connection, pid] : state_->pids) {
        if (std::find(result.begin(), result.end(), pid) == result.end()) result.push_back(pid);
    }
    return result;
}

}  // namespace ovin
