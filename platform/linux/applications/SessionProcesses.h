#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/ProcessInfo.h"
#include "platform/linux/system/Bus.h"

namespace ovin {

/// The processes that are connected to the session bus, kept up to date by the bus's own signals. Any thread.
class SessionProcesses {
public:
    /// Returns when all processes connected now are known, or after a second. `bus` must outlive this object.
    explicit SessionProcesses(Bus& bus);

    /// Calls `handler` on the bus's thread whenever a process has become known, or has closed its last connection,
    /// for as long as the bus is connected.
    void observe(std::function<void()> handler);

    /// Each process once, in the order in which they connected.
    [[nodiscard]] std::vector<ProcessID> processes() const;

private:
    struct State;

    std::shared_ptr<State> state_;
};

}  // namespace ovin
