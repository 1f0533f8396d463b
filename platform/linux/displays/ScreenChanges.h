#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

class QScreen;

namespace ovin {

/// Reports changes of the screens, whether the toolkit notices them or only the X server does. Main thread only.
class ScreenChanges final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    ScreenChanges();
    ~ScreenChanges() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

Q_SIGNALS:
    /// Emitted once for all changes that come together, after the toolkit has handled them.
    void changed();

private:
    void watch(QScreen* screen);
    void note();

    /// The number of RandR's first event at this X server; 0 without RandR.
    int firstEvent_ = 0;
    QTimer burst_;
};

}  // namespace ovin
