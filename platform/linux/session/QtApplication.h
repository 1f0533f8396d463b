#pragma once

#include <QObject>
#include <functional>

#include "platform/Application.h"
#include "platform/linux/system/TerminationSignal.h"

namespace ovin {

/// The Qt program itself. However it is asked to end (by `terminate`, a signal, the session manager, the toolkit or the end
/// of the session bus), its end takes one way: the handler is called once, and then every event loop is left, nested ones
/// included. Only the end of the X server leaves no time: the toolkit ends the program on the spot, and with the server the
/// modes of its displays are gone.
class QtApplication final : public QObject, public Application {
    Q_OBJECT

public:
    /// Needs Qt's application object.
    QtApplication();

    void activate() override;
    /// May be called at any time, before `run` and in the middle of a menu or an alert.
    void terminate() override;
    void beep() override;

    /// Sets what is called before the program ends, at the moment when the end is asked for.
    void onTerminate(std::function<void()> handler) { handler_ = std::move(handler); }

    /// Also ends with these signals. `signals` must outlive this object.
    void endWith(TerminationSignal& signals);

    /// Runs the event loop until somebody asks for the end, and not at all when somebody has. The program's exit status.
    [[nodiscard]] int run();

private:
    Q_SLOT void sessionBusDisconnected();

    void tellOnce();

    std::function<void()> handler_;
    bool isEnding_ = false;
};

}  // namespace ovin
