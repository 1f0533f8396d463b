#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace ovin {

/// Turns the signals that ask a program to end, SIGTERM, SIGINT and SIGHUP, into a signal of the event loop. Once this
/// exists they do not end the program by themselves; further ones change nothing. A signal that the program was started to
/// ignore, as by nohup, stays ignored. Must be made before any thread is started.
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
