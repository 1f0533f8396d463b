#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/MainQueue.h"

namespace ovin {

/// The date, and time that goes on while the computer sleeps. Main thread only.
class WallClock {
public:
    virtual ~WallClock() = default;

    /// The date as this computer believes it to be, since the beginning of 1970 in UTC. The date may be wrong, and jumps
    /// forwards or back when it is corrected.
    [[nodiscard]] virtual std::chrono::seconds date() const = 0;

    /// Calls `handler` on the main thread, once and never within this call, when `delay` has passed, including time asleep.
    /// A sleeping computer is not woken; the handler is called once the computer is awake. The program does not wake up
    /// before. Destroying the timer cancels the call; the handler may destroy it. Never null.
    [[nodiscard]] virtual std::unique_ptr<MainQueue::Timer> after(std::chrono::seconds delay,
                                                                  std::function<void()> handler) = 0;
};

}  // namespace ovin
