#include "platform/linux/session/QtApplication.h"

#include <QApplication>
#include <QDBusConnection>
#include <QSessionManager>
#include <QWindow>
#include <utility>

#include "platform/linux/windows/WindowManager.h"

namespace ovin {

QtApplication::QtApplication() {
    // For ends that the toolkit begins by itself, for example when the session manager asks.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &QtApplication::terminate);
    // Nothing ends yet, because the user may still cancel the end of the session. The session manager must not restart this
    // program: the desktop starts it at login if the user wants that.
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); }, Qt::DirectConnection);
    // The signal that the toolkit itself sends for a broken connection.
    QDBusConnection::sessionBus().connect(QString(), "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                                          "Disconnected", this, SLOT(sessionBusDisconnected()));
}

/// The desktop orders windows, not programs, so the newest window that takes the focus is activated.
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

/// Without the bus there are no items and no requests, so the program ends, while it can still put the displays back.
void QtApplication::sessionBusDisconnected() {
    qWarning("Ovin: the session bus is gone");
    terminate();
}

void QtApplication::terminate() {
    isEnding_ = true;
    tellOnce();
    // Not `quit`, which a window may refuse and which does nothing before the event loop runs.
    QCoreApplication::exit();
}

void QtApplication::tellOnce() {
    if (const auto handler = std::exchange(handler_, nullptr)) handler();
}

int QtApplication::run() {
    const int status = isEnding_ ? 0 : QCoreApplication::exec();
    // Also when the end was asked for before there was a handler.
    tellOnce();
    return status;
}

void QtApplication::beep() { QApplication::beep(); }

}  // namespace ovin
