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

/// The accessibility bus of the session: whether it is enabled, and the windows of the programs on it. Any thread, but not
/// the session bus's.
class AccessibilityBus {
public:
    /// `session` must outlive this object.
    explicit AccessibilityBus(Bus& session);

    /// Whether assistive programs are enabled, as the session has told it last. Asks nobody: every click on the status item
    /// wants to know, also while the bus is busy.
    [[nodiscard]] bool isEnabled() const { return *enabled_; }

    /// Returns when the session has told of it at all, which a busy one may not have by the end of the constructor, or after
    /// 25 s.
    void waitForAnswer() const;

    /// Enables assistive programs for the session; false when the system refused.
    [[nodiscard]] bool enable();

    /// The connection, made when it is first needed; null while there is none.
    [[nodiscard]] Bus* bus() const;

    /// The windows of a process; nothing within `timeout`, or when the process is not on the bus.
    [[nodiscard]] std::vector<AccessibleName> windowsOf(ProcessID pid, Bus::Duration timeout) const;

private:
    Bus& session_;
    /// Shared with the handler of the bus, which may still run while the owner goes.
    std::shared_ptr<std::atomic<bool>> enabled_ = std::make_shared<std::atomic<bool>>(false);
    std::shared_future<void> firstAnswer_;
    mutable std::mutex mutex_;
    mutable std::unique_ptr<Bus> bus_;
};

}  // namespace ovin
