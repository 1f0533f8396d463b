#pragma once

#include <chrono>

namespace ovin {

/// The date, and a measure that outlasts sleep. Main thread only.
class WallClock {
public:
    virtual ~WallClock() = default;

    /// The date as this computer believes it to be, since the beginning of 1970 in UTC. It may be wrong, and jump either way
    /// when somebody sets it right.
    [[nodiscard]] virtual std::chrono::seconds date() const = 0;

    /// The time since the computer started, which goes on while it sleeps and never goes back.
    [[nodiscard]] virtual std::chrono::seconds timeSinceBoot() const = 0;
};

}  // namespace ovin
