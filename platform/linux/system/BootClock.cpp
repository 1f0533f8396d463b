#include "platform/linux/system/BootClock.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <ctime>
#include <optional>
#include <utility>

namespace ovin {
namespace {

class KernelTimer final : public MainQueue::Timer {
public:
    KernelTimer(std::chrono::seconds delay, std::function<void()> handler)
        : file_(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC)), handler_(std::move(handler)) {
        if (file_ < 0) return;
        itimerspec time{};
        time.it_value.tv_sec = delay.count();
        // At least 1 ns, because zero would stop the timer.
        time.it_value.tv_nsec = 1;
        (void)timerfd_settime(file_, 0, &time, nullptr);
        notifier_.emplace(file_, QSocketNotifier::Read);
        QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this] { goOff(); });
    }
    ~KernelTimer() override {
        notifier_.reset();
        if (file_ >= 0) close(file_);
    }

private:
    void goOff() {
        notifier_->setEnabled(false);
        // Runs from a copy, because the handler may destroy this object, and itself with it.
        const auto handler = handler_;
        handler();
    }

    const int file_;
    const std::function<void()> handler_;
    std::optional<QSocketNotifier> notifier_;
};

}  // namespace

std::chrono::seconds BootClock::date() const { return std::chrono::seconds(std::time(nullptr)); }

std::unique_ptr<MainQueue::Timer> BootClock::after(std::chrono::seconds delay, std::function<void()> handler) {
    return std::make_unique<KernelTimer>(delay, std::move(handler));
}

}  // namespace ovin
