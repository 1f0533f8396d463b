#pragma once

#include "platform/WallClock.h"

namespace ovin {

/// The date, and timers of the kernel by its boot clock, to which the event loop of the Qt program listens. Where the
/// process can open no more files, they do not go off.
class BootClock final : public WallClock {
public:
    [[nodiscard]] std::chrono::seconds date() const override;
    [[nodiscard]] std::unique_ptr<MainQueue::Timer> after(std::chrono::seconds delay,
                                                          std::function<void()> handler) override;
};

}  // namespace ovin
