#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/Handle.h"

namespace ovin {

/// Runs work on the main thread, which owns all state of this program.
class MainQueue {
public:
    using Work = std::function<void()>;

    /// Keeps delayed work alive. Destroying it before the work began cancels the work. Main thread only.
    using Timer = Handle;

    virtual ~MainQueue() = default;

    /// Runs `work` on the main thread, after the work that is already queued and never within this call. Any thread. Work
    /// that is still waiting when the program ends is dropped.
    virtual void async(Work work) = 0;

    /// Runs `work` on the main thread once `delay` has passed, unless the timer is destroyed first. Work due at the same
    /// time runs in the order of these calls. Main thread only; `work` may destroy its own timer.
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::nanoseconds delay, Work work) = 0;
};

}  // namespace ovin
