#include "updates/CheckSchedule.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace ovin {
namespace {

/// An integer: the date of the last check, in seconds since the beginning of 1970 in UTC.
constexpr std::string_view lastCheckKey = "OvinLastUpdateCheck";

}  // namespace

std::chrono::seconds CheckSchedule::untilFirst() {
    const auto stored = defaults_.object(lastCheckKey);
    const auto* const last = stored ? std::get_if<std::int64_t>(&*stored) : nullptr;
    // A value of another type, or a date before 1970, tells of no check.
    if (last == nullptr || *last < 0) return std::chrono::seconds(0);
    const std::int64_t now = clock_.date().count();
    if (*last > now) {
        // A store that refuses the date will refuse it at the check as well.
        (void)defaults_.set(lastCheckKey, now);
        return interval;
    }
    return std::max(interval - std::chrono::seconds(now - *last), std::chrono::seconds(0));
}

bool CheckSchedule::begin() {
    stampBefore_ = defaults_.object(lastCheckKey);
    return defaults_.set(lastCheckKey, std::int64_t{clock_.date().count()});
}

std::chrono::seconds CheckSchedule::reachedNobody() {
    // If the program is started again before the next attempt, it checks at its start.
    if (stampBefore_) {
        (void)defaults_.set(lastCheckKey, *stampBefore_);
    } else {
        (void)defaults_.remove(lastCheckKey);
    }
    return std::exchange(retry_, std::min(retry_ * 2, interval));
}

}  // namespace ovin
