#pragma once

#include <atomic>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/ProcessInfo.h"
#include "platform/linux/accessibility/AccessibleDetails.h"
#include "platform/linux/system/Bus.h"

namespace ovin {

/// The accessibility bus of the session: whether it is enabled, and the windows of the programs on it. Any thread but the
/// session bus's.
class AccessibilityBus {
public:
    /// `session` must outlive this object.
    explicit AccessibilityBus(Bus& session);

    /// Whether assistive programs are enabled, as the session told it last. Never blocks, because every click on the status
    /// item calls it, also while the bus is busy.
    [[nodiscard]] bool isEnabled() const { return *enabled_; }

    /// Whether a bar runs whose layout is read over this bus, as the session told it last; never blocks. All else that is
    /// known of status items comes from the session bus.
    [[nodiscard]] bool isNeeded() const { return *needed_; }

    /// Returns when the session has told both for the first time, for which the constructor waits only briefly, or after 25
    /// s.
    void waitForAnswer() const;

    /// Enables assistive programs, in the user's later sessions too if the desktop keeps that; false when the system
    /// refused.
    [[nodiscard]] bool enable();

    /// The connection, made at the first call; null when that fails.
    [[nodiscard]] Bus* bus() const;

    /// The windows of a process; empty when the answers take longer than `timeout` or the process is not on the bus.
    [[nodiscard]] std::vector<AccessibleName> windowsOf(ProcessID pid, Bus::Duration timeout) const;

private:
    Bus& session_;
    /// Shared with the handlers of the bus, which may still run while this object is destroyed.
    std::shared_ptr<std::atomic<bool>> enabled_ = std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<std::atomic<bool>> needed_ = std::make_shared<std::atomic<bool>>(false);
    std::shared_future<void> firstAnswer_;
    std::shared_future<void> firstBar_;
    mutable std::mutex mutex_;
    mutable std::unique_ptr<Bus> bus_;
};

}  // namespace ovin
