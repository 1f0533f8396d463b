#pragma once

#include "platform/WallClock.h"

namespace ovin {

/// The date, and timers by the kernel's boot clock, which the event loop of the Qt program watches. When the process can
/// open no more files, new timers do not go off.
class BootClock final : public WallClock {
public:
    [[nodiscard]] std::chrono::seconds date() const override;
    [[nodiscard]] std::unique_ptr<MainQueue::Timer> after(std::chrono::seconds delay,
                                                          std::function<void()> handler) override;
};

}  // namespace ovin
