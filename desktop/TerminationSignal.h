#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace ovin {

/// Turns the signals that ask a program to end into one of the event loop's. Made before any thread is started.
class TerminationSignal : public QObject {
    Q_OBJECT

public:
    TerminationSignal();
    ~TerminationSignal() override;

    /// Starts to emit `received`. Needs the application object.
    void listen();

Q_SIGNALS:
    void received();

private:
    int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ovin
