#include "desktop/MinuteClock.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <ctime>

namespace ovin {

MinuteClock::MinuteClock() : timer_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    notifier_ = std::make_unique<QSocketNotifier>(timer_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &MinuteClock::wakeUp);
    wait();
}

MinuteClock::~MinuteClock() {
    notifier_.reset();
    close(timer_);
}

/// The system's timer runs by the clock that people see, so that it neither drifts nor misses a change of that clock.
void MinuteClock::wait() {
    constexpr std::time_t minute = 60;
    itimerspec next{};
    next.it_value.tv_sec = (std::time(nullptr) / minute + 1) * minute;
    next.it_interval.tv_sec = minute;
    timerfd_settime(timer_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &next, nullptr);
}

void MinuteClock::wakeUp() {
    std::uint64_t expirations = 0;
    const bool wasClockSet = read(timer_, &expirations, sizeof expirations) < 0;
    if (wasClockSet) wait();
    Q_EMIT minuteChanged();
}

}  // namespace ovin
