#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace ovin {

/// Turns the signals that ask a program to end, SIGTERM, SIGINT and SIGHUP, into one of the event loop's. From its making on
/// they end nobody by themselves: further ones find a program that is ending already and change nothing. A signal that the
/// program was started to ignore, as by nohup, stays ignored. Made before any thread is started.
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
