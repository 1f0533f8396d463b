#include "updates/CheckSchedule.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace ovin {
namespace {

/// An integer: the date of the last check, in seconds since the beginning of 1970 in UTC.
constexpr std::string_view lastCheckKey = "OvinLastUpdateCheck";

std::int64_t stamp(std::chrono::seconds date) { return date.count(); }

}  // namespace

std::chrono::seconds CheckSchedule::due() {
    if (!due_) due_ = dueByDate();
    return *due_;
}

void CheckSchedule::dateChanged() {
    if (!hasBegun_) due_ = std::min(due(), dueByDate());
}

std::chrono::seconds CheckSchedule::dueByDate() {
    const std::chrono::seconds sinceBoot = clock_.timeSinceBoot();
    const auto stored = defaults_.object(lastCheckKey);
    const auto* const last = stored ? std::get_if<std::int64_t>(&*stored) : nullptr;
    // Whoever put another type there has not checked either; and a date before 1970 is none.
    if (last == nullptr || *last < 0) return sinceBoot;
    const std::chrono::seconds now = clock_.date();
    if (*last > stamp(now)) {
        // A store that refuses the date will refuse it at the check as well.
        (void)defaults_.set(lastCheckKey, stamp(now));
        return sinceBoot + interval;
    }
    const std::chrono::seconds passed = now - std::chrono::seconds(*last);
    return sinceBoot + std::max(interval - passed, std::chrono::seconds(0));
}

bool CheckSchedule::begin() {
    hasBegun_ = true;
    due_ = clock_.timeSinceBoot() + interval;
    stampBefore_ = defaults_.object(lastCheckKey);
    return defaults_.set(lastCheckKey, stamp(clock_.date()));
}

void CheckSchedule::reachedNobody() {
    // A program that is started again before the next attempt makes it at its start.
    if (stampBefore_) {
        (void)defaults_.set(lastCheckKey, *stampBefore_);
    } else {
        (void)defaults_.remove(lastCheckKey);
    }
    due_ = clock_.timeSinceBoot() + retry_;
    retry_ = std::min(retry_ * 2, interval);
}

}  // namespace ovin
