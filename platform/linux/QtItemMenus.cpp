#include "platform/linux/QtItemMenus.h"

#include <QCursor>
#include <QMenu>
#include <QThread>

#include "platform/linux/DBusMenu.h"

namespace ovin {

QtItemMenus::QtItemMenus() = default;

QtItemMenus::~QtItemMenus() = default;

bool QtItemMenus::show(const std::string& destination, const std::string& path) {
    QMetaObject::invokeMethod(
        this, [this, destination, path] { open(QString::fromStdString(destination), QString::fromStdString(path)); },
        Qt::QueuedConnection);
    return true;
}

Point QtItemMenus::position() {
    Point position;
    const auto ask = [&position] {
        const QPoint pointer = QCursor::pos();
        position = {static_cast<double>(pointer.x()), static_cast<double>(pointer.y())};
    };
    // The pointer is asked for where the toolkit lives. Tasks may wait for that: nothing there waits for tasks.
    const bool isMainThread = QThread::currentThread() == thread();
    QMetaObject::invokeMethod(this, ask, isMainThread ? Qt::DirectConnection : Qt::BlockingQueuedConnection);
    return position;
}

void QtItemMenus::open(const QString& destination, const QString& path) {
    menu_ = std::make_unique<DBusMenu>(QDBusConnection::sessionBus(), destination, path);
    menu_->prepare([this](bool isUsable) {
        if (!isUsable) return close();
        connect(&menu_->menu(), &QMenu::aboutToHide, this, &QtItemMenus::close, Qt::QueuedConnection);
        menu_->menu().popup(QCursor::pos());
    });
}

void QtItemMenus::close() {
    // A menu reports the click after it has begun to hide.
    if (menu_) menu_.release()->deleteLater();
    Q_EMIT closed();
}

}  // namespace ovin
