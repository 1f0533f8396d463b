#include "platform/linux/QtMainQueue.h"

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
        // The work may destroy its own timer, and itself with it: it runs from a copy.
        QObject::connect(&timer_, &QTimer::timeout, [work = std::move(work)] {
            const MainQueue::Work running = work;
            running();
        });
        // A moment that has passed is as good as now; the toolkit would not start the timer at all.
        timer_.start(std::max(std::chrono::ceil<std::chrono::milliseconds>(delay), std::chrono::milliseconds(0)));
    }

private:
    QTimer timer_;
};

}  // namespace

void QtMainQueue::async(Work work) { QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection); }

std::unique_ptr<MainQueue::Timer> QtMainQueue::after(std::chrono::nanoseconds delay, Work work) {
    return std::make_unique<OneShot>(delay, std::move(work));
}

}  // namespace ovin
