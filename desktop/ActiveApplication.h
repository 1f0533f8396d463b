#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QString>

namespace ovin {

/// The name of the application whose window is active, as the window manager announces it on the root window.
class ActiveApplication : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    ActiveApplication();

    /// "Desktop" when no window is active.
    [[nodiscard]] const QString& name() const { return name_; }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

Q_SIGNALS:
    void nameChanged();

private:
    void update();

    xcb_window_t root_;
    xcb_atom_t activeWindow_;
    QString name_;
};

}  // namespace ovin
