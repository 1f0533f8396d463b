#pragma once

#include "platform/WallClock.h"

namespace ovin {

/// The date and the boot clock of the kernel, whose timers the event loop of the Qt program listens to. Where the process
/// can open no more files, alarms do not go off.
class BootClock final : public WallClock {
public:
    [[nodiscard]] std::chrono::seconds date() const override;
    [[nodiscard]] std::chrono::seconds timeSinceBoot() const override;
    [[nodiscard]] std::unique_ptr<Alarm> setAlarm(std::chrono::seconds time, std::function<void()> handler) override;
    [[nodiscard]] std::unique_ptr<Alarm> observeDate(std::function<void()> handler) override;
};

}  // namespace ovin
