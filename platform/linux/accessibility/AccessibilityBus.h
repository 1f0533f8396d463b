#pragma once

#include <functional>
#include <future>
#include <memory>
#include <mutex>
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
    [[nodiscard]] bool isEnabled() const;

    /// Whether a bar runs whose layout is read over this bus, as the session told it last; never blocks. All else that is
    /// known of status items comes from the session bus.
    [[nodiscard]] bool isNeeded() const;

    /// Whether somebody has disabled assistive programs since they were last known to be enabled. Never blocks. A service
    /// that ends takes them with it, but nobody has disabled them then.
    [[nodiscard]] bool wasSwitchedOff() const;

    /// Waits until the session has told whether assistive programs are enabled and needed, for which the constructor waits
    /// only briefly; false after `longest`.
    bool waitForAnswer(Bus::Duration longest = std::chrono::seconds(25)) const;
    [[nodiscard]] bool hasAnswered() const { return waitForAnswer(Bus::Duration::zero()); }

    /// Calls `handler` on the bus's thread whenever any of these may have become true or false. Null ends that; no call is
    /// under way any more when this returns. Not on the bus's thread.
    void observe(std::function<void()> handler);

    /// Has assistive programs enabled, in the user's later sessions too if the desktop keeps that. Returns at once.
    void enable();

    /// The connection, made at the first call; null when that fails.
    [[nodiscard]] Bus* bus() const;

    /// The windows of a process; empty when the answers take longer than `timeout` or the process is not on the bus.
    [[nodiscard]] std::vector<AccessibleName> windowsOf(ProcessID pid, Bus::Duration timeout) const;

private:
    struct State;

    Bus& session_;
    /// Shared with the handlers of the bus, which may still run while this object is destroyed.
    const std::shared_ptr<State> state_;
    std::shared_future<void> firstAnswer_;
    std::shared_future<void> firstBar_;
    mutable std::mutex mutex_;
    mutable std::unique_ptr<Bus> bus_;
};

}  // namespace ovin
