#pragma once

#include <chrono>
#include <optional>

#include "platform/UserDefaults.h"
#include "platform/WallClock.h"

namespace ovin {

/// When to look for updates unasked: once a day from the last check, whoever asked for that one. Main thread only.
///
/// Within one run of the program it goes by the time since the computer started, which nobody can set; across runs by the
/// date, which is stored before each check. A stored date in the future says nothing but that some clock was wrong, and
/// counts as now: checks then go on within a day. A date that is set right before the first check of a run can show that it
/// is due sooner. A check whose date cannot be stored is not made unasked, or there could be one at every start.
class CheckSchedule {
public:
    static constexpr std::chrono::seconds interval = std::chrono::hours(24);
    static constexpr std::chrono::seconds firstRetry = std::chrono::minutes(15);

    /// Both must outlive this object.
    CheckSchedule(UserDefaults& defaults, const WallClock& clock) : defaults_(defaults), clock_(clock) {}

    /// When the next check is due, by the time since the computer started; not later than now when one is. Changes with the
    /// calls below only.
    [[nodiscard]] std::chrono::seconds due();

    /// Somebody has set the date.
    void dateChanged();

    /// A check begins; false when its date could not be stored.
    [[nodiscard]] bool begin();

    /// The check that has begun reached nobody, as it happens without a network, and so was none: the next one is due after
    /// a while, which doubles each time up to a day.
    void reachedNobody();
    /// It reached somebody, whatever the answer.
    void reachedSomebody() { retry_ = firstRetry; }

private:
    [[nodiscard]] std::chrono::seconds dueByDate();

    UserDefaults& defaults_;
    const WallClock& clock_;
    /// Known from the first question on.
    std::optional<std::chrono::seconds> due_;
    /// Whether a check of this run has begun, which the date has no say in any more.
    bool hasBegun_ = false;
    std::optional<UserDefaults::Value> stampBefore_;
    std::chrono::seconds retry_ = firstRetry;
};

}  // namespace ovin
