#pragma once

#include <QObject>
#include <deque>
#include <mutex>

#include "platform/MainQueue.h"

namespace ovin {

/// The event loop of the Qt program, made on its thread. Work waits for the loop to run, also that of a menu or an alert.
class QtMainQueue final : private QObject, public MainQueue {
public:
    void async(Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::nanoseconds delay, Work work) override;

private:
    /// Runs one piece of work.
    void customEvent(QEvent*) override;

    // Work waits here instead of in the toolkit's queue, because the thread sanitizer does not see that queue's locks and
    // would report every piece of work that comes from a task as a race.
    std::mutex mutex_;
    std::deque<Work> waiting_;
};

}  // namespace ovin
