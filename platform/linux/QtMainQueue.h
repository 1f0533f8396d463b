#pragma once

#include <QObject>

#include "platform/MainQueue.h"

namespace ovin {

/// The event loop of the Qt program, made on its thread. Work waits for the loop to run, also within a menu or an alert.
class QtMainQueue final : public MainQueue {
public:
    void async(Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::nanoseconds delay, Work work) override;

private:
    /// Work is dropped when this goes.
    QObject context_;
};

}  // namespace ovin
