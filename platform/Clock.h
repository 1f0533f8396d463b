#pragma once

#include <chrono>

namespace ovin {

/// Measures elapsed time. Any thread.
class Clock {
public:
    virtual ~Clock() = default;

    /// The time since some fixed moment of this process; never goes back. It may or may not go on while the
    /// machine sleeps.
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
};

}  // namespace ovin
