#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/Handle.h"

namespace ovin {

/// The date, and a measure that outlasts sleep. Main thread only.
class WallClock {
public:
    /// Keeps something waiting. Destroying it ends that, and what waits is not called any more.
    using Alarm = Handle;

    virtual ~WallClock() = default;

    /// The date as this computer believes it to be, since the beginning of 1970 in UTC. It may be wrong, and jump either way
    /// when somebody sets it right.
    [[nodiscard]] virtual std::chrono::seconds date() const = 0;

    /// The time since the computer started, which goes on while it sleeps and never goes back.
    [[nodiscard]] virtual std::chrono::seconds timeSinceBoot() const = 0;

    /// Calls `handler` on the main thread, once and never within this call, when `timeSinceBoot` has come to `time` or is
    /// already past it. A computer that sleeps then is not woken; it happens as soon as it is awake. Nothing wakes up
    /// before. The handler may destroy the alarm. Never null.
    [[nodiscard]] virtual std::unique_ptr<Alarm> setAlarm(std::chrono::seconds time, std::function<void()> handler) = 0;

    /// Calls `handler` on the main thread after each time that the date was set, and perhaps when it was not. The handler
    /// may destroy what is returned. Never null.
    [[nodiscard]] virtual std::unique_ptr<Alarm> observeDate(std::function<void()> handler) = 0;
};

}  // namespace ovin
