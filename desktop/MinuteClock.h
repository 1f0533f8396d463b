#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace ovin {

/// Wakes up at each change of the minute, exactly then and not in between, and when somebody sets the system's clock.
class MinuteClock : public QObject {
    Q_OBJECT

public:
    MinuteClock();
    ~MinuteClock() override;

Q_SIGNALS:
    void minuteChanged();

private:
    void wait();
    void wakeUp();

    int timer_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ovin
