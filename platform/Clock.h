#pragma once

#include <chrono>

namespace ovin {

/// Measures elapsed time. Any thread.
class Clock {
public:
    virtual ~Clock() = default;

    /// The time since some fixed moment of this process; never goes back and goes on while the machine sleeps or not, as
    /// the system's steady clock does.
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
};

}  // namespace ovin
