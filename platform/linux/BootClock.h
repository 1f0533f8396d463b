#pragma once

#include "platform/WallClock.h"

namespace ovin {

/// The date and the boot clock of the kernel.
class BootClock final : public WallClock {
public:
    [[nodiscard]] std::chrono::seconds date() const override;
    [[nodiscard]] std::chrono::seconds timeSinceBoot() const override;
};

}  // namespace ovin
