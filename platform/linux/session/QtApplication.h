#pragma once

#include <QObject>
#include <functional>

#include "platform/Application.h"
#include "platform/linux/system/TerminationSignal.h"

namespace ovin {

/// The Qt program itself. Whatever asks it to end (`terminate`, a signal, the session manager, the toolkit or the end of the
/// session bus), the handler is called once, and then every event loop is left, nested ones included. Only when the X server
/// ends is the handler not called: the toolkit ends the program at once, and the modes of the displays are gone with the
/// server.
class QtApplication final : public QObject, public Application {
    Q_OBJECT

public:
    /// Needs Qt's application object.
    QtApplication();

    void activate() override;
    /// May be called at any time, before `run` and in the middle of a menu or an alert.
    void terminate() override;
    void beep() override;

    /// Sets the handler, which is called as soon as the end is asked for.
    void onTerminate(std::function<void()> handler) { handler_ = std::move(handler); }

    /// Also ends the program when `signals` reports a signal. `signals` must outlive this object.
    void endWith(TerminationSignal& signals);

    /// Runs the event loop until the end is asked for, or not at all if it has been. Returns the program's exit status.
    [[nodiscard]] int run();

private:
    Q_SLOT void sessionBusDisconnected();

    void tellOnce();

    std::function<void()> handler_;
    bool isEnding_ = false;
};

}  // namespace ovin
