#include "platform/linux/session/QtApplication.h"

#include <QApplication>
#include <QDBusConnection>
#include <QSessionManager>
#include <QWindow>
#include <utility>

#include "platform/linux/windows/WindowManager.h"

namespace ovin {

QtApplication::QtApplication() {
    // Whatever makes the toolkit leave its event loop without asking here: the session manager, for one.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &QtApplication::terminate);
    // The session manager asks before the user may still cancel the end of the session, so nothing ends yet. It starts this
    // program no more by itself: the desktop does, where the user wants that.
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); }, Qt::DirectConnection);
    // The toolkit's own words for a connection that broke.
    QDBusConnection::sessionBus().connect(QString(), "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                                          "Disconnected", this, SLOT(sessionBusDisconnected()));
}

/// There is no order among programs here, only among windows: the newest one that takes the focus gets it.
void QtApplication::activate() {
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (auto window = windows.crbegin(); window != windows.crend(); ++window) {
        const bool takesFocus = (*window)->type() == Qt::Window || (*window)->type() == Qt::Dialog;
        if ((*window)->isVisible() && takesFocus && !(*window)->flags().testFlag(Qt::WindowDoesNotAcceptFocus)) {
            return WindowManager::bringToFront(**window);
        }
    }
}

void QtApplication::endWith(TerminationSignal& signals) {
    connect(&signals, &TerminationSignal::received, this, &QtApplication::terminate);
    signals.listen();
}

/// Without the bus there are no items to show and no way to be asked for anything; the displays can still be put back.
void QtApplication::sessionBusDisconnected() {
    qWarning("Ovin: the session bus is gone");
    terminate();
}

void QtApplication::terminate() {
    isEnding_ = true;
    tellOnce();
    // Asking the toolkit to quit would let a window object, and do nothing before the event loop runs.
    QCoreApplication::exit();
}

void QtApplication::tellOnce() {
    if (const auto handler = std::exchange(handler_, nullptr)) handler();
}

int QtApplication::run() {
    const int status = isEnding_ ? 0 : QCoreApplication::exec();
    // Also for whoever asked for the end before there was a handler.
    tellOnce();
    return status;
}

void QtApplication::beep() { QApplication::beep(); }

}  // namespace ovin
