#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/MainQueue.h"

namespace ovin {

/// The date, and time that goes on during sleep. Main thread only.
class WallClock {
public:
    virtual ~WallClock() = default;

    /// The date as this computer believes it to be, since the beginning of 1970 in UTC. It may be wrong, and jump either way
    /// when somebody sets it right.
    [[nodiscard]] virtual std::chrono::seconds date() const = 0;

    /// Calls `handler` on the main thread, once and never within this call, when so much time has passed, whether or not the
    /// computer slept meanwhile. One that sleeps then is not woken; it happens as soon as it is awake. Nothing wakes up
    /// before. Destroying the timer cancels it; the handler may do that. Never null.
    [[nodiscard]] virtual std::unique_ptr<MainQueue::Timer> after(std::chrono::seconds delay,
                                                                  std::function<void()> handler) = 0;
};

}  // namespace ovin
