#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

class QScreen;

namespace ovin {

/// Tells of changes of the screens, whether the toolkit notices them or only the X server does. Main thread only.
class ScreenChanges final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    ScreenChanges();
    ~ScreenChanges() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

Q_SIGNALS:
    /// Once for all changes that come in one go, and when the toolkit knows of them too.
    void changed();

private:
    void watch(QScreen* screen);
    void note();

    /// The first of the numbers that the X server has given to RandR's events; 0 without any.
    int firstEvent_ = 0;
    QTimer burst_;
};

}  // namespace ovin
