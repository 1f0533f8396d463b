#pragma once

#include "platform/Clock.h"

namespace ovin {

/// The system's steady clock.
class SteadyClock final : public Clock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override;
};

}  // namespace ovin
