#include "platform/linux/system/QtMainQueue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace ovin {
namespace {

class OneShot final : public MainQueue::Timer {
public:
    OneShot(std::chrono::nanoseconds delay, MainQueue::Work work) {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        // Runs from a copy, because the work may destroy its own timer, and itself with it.
        QObject::connect(&timer_, &QTimer::timeout, [work = std::move(work)] {
            const MainQueue::Work running = work;
            running();
        });
        // At least 0, because the toolkit would not start a timer with a negative delay.
        timer_.start(std::max(std::chrono::ceil<std::chrono::milliseconds>(delay), std::chrono::milliseconds(0)));
    }

private:
    QTimer timer_;
};

}  // namespace

void QtMainQueue::async(Work work) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    // One event for each piece of work, so that the toolkit can handle its own events between two.
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void QtMainQueue::customEvent(QEvent*) {
    Work work;
    {
        const std::lock_guard lock(mutex_);
        work = std::move(waiting_.front());
        waiting_.pop_front();
    }
    work();
}

std::unique_ptr<MainQueue::Timer> QtMainQueue::after(std::chrono::nanoseconds delay, Work work) {
    return std::make_unique<OneShot>(delay, std::move(work));
}

}  // namespace ovin
