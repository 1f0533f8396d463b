#pragma once

#include <chrono>
#include <optional>

#include "platform/UserDefaults.h"
#include "platform/WallClock.h"

namespace ovin {

/// When to look for updates unasked: once a day from the last check, whoever asked for that one. Main thread only.
///
/// Within one run of the program the caller waits for as long as the calls below return, by a clock that nobody can set;
/// across runs the date decides, which is stored before each check. A stored date in the future means that some clock was
/// wrong, and counts as now, so that checks go on within a day. A check whose date cannot be stored is not made unasked,
/// because there could be one at every start.
class CheckSchedule {
public:
    static constexpr std::chrono::seconds interval = std::chrono::hours(24);
    static constexpr std::chrono::seconds firstRetry = std::chrono::minutes(15);

    /// Both must outlive this object.
    CheckSchedule(UserDefaults& defaults, const WallClock& clock) : defaults_(defaults), clock_(clock) {}

    /// In what time the first check of this run is due.
    [[nodiscard]] std::chrono::seconds untilFirst();

    /// A check begins, and the next one is due after `interval`; false when its date could not be stored.
    [[nodiscard]] bool begin();

    /// The check that has begun reached nobody, for example without a network, and so does not count. Returns in what time
    /// to try again: it doubles each time up to a day.
    [[nodiscard]] std::chrono::seconds reachedNobody();
    /// It reached somebody, whatever the answer.
    void reachedSomebody() { retry_ = firstRetry; }

private:
    UserDefaults& defaults_;
    const WallClock& clock_;
    std::optional<UserDefaults::Value> stampBefore_;
    std::chrono::seconds retry_ = firstRetry;
};

}  // namespace ovin
