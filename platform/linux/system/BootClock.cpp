#include "platform/linux/system/BootClock.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <limits>
#include <optional>
#include <utility>

namespace ovin {
namespace {

std::chrono::seconds read(clockid_t clock) {
    timespec time{};
    // Fails for clocks that do not exist only.
    (void)clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec);
}

/// A timer of the kernel, for one moment of one of its clocks.
class KernelTimer final : public WallClock::Alarm {
public:
    struct Moment {
        clockid_t clock;
        time_t seconds;
        /// Whether it also goes off when the clock is set, and then waits for the next time.
        bool watchesClock;
    };
    KernelTimer(Moment moment, std::function<void()> handler)
        : moment_(moment), file_(timerfd_create(moment.clock, TFD_NONBLOCK | TFD_CLOEXEC)), handler_(std::move(handler)) {
        if (file_ < 0) return;
        start();
        notifier_.emplace(file_, QSocketNotifier::Read);
        QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this] { goOff(); });
    }
    ~KernelTimer() override {
        notifier_.reset();
        if (file_ >= 0) close(file_);
    }

private:
    void start() const {
        itimerspec time{};
        time.it_value.tv_sec = moment_.seconds;
        // A clock that is set meanwhile is told of here already, and the timer runs nevertheless.
        const int flags = TFD_TIMER_ABSTIME | (moment_.watchesClock ? TFD_TIMER_CANCEL_ON_SET : 0);
        (void)timerfd_settime(file_, flags, &time, nullptr);
    }

    void goOff() {
        std::uint64_t count = 0;
        const bool wasSet = ::read(file_, &count, sizeof count) < 0;
        if (wasSet && errno != ECANCELED) return;
        if (wasSet) start();
        // The handler may destroy this object, and itself with it: it runs from a copy.
        const auto handler = handler_;
        handler();
    }

    const Moment moment_;
    const int file_;
    const std::function<void()> handler_;
    std::optional<QSocketNotifier> notifier_;
};

}  // namespace

std::chrono::seconds BootClock::date() const { return read(CLOCK_REALTIME); }
std::chrono::seconds BootClock::timeSinceBoot() const { return read(CLOCK_BOOTTIME); }

std::unique_ptr<WallClock::Alarm> BootClock::setAlarm(std::chrono::seconds time, std::function<void()> handler) {
    // Zero would stop the timer.
    const time_t seconds = std::max<time_t>(time.count(), 1);
    return std::make_unique<KernelTimer>(KernelTimer::Moment{CLOCK_BOOTTIME, seconds, false}, std::move(handler));
}

std::unique_ptr<WallClock::Alarm> BootClock::observeDate(std::function<void()> handler) {
    const time_t never = std::numeric_limits<time_t>::max();
    return std::make_unique<KernelTimer>(KernelTimer::Moment{CLOCK_REALTIME, never, true}, std::move(handler));
}

}  // namespace ovin
