#include "platform/linux/items/QtItemMenus.h"

#include <QCursor>
#include <QMenu>
#include <QThread>
#include <chrono>
#include <utility>

#include "platform/linux/drawing/MenuAnchor.h"
#include "platform/linux/items/DBusMenu.h"

namespace ovin {

namespace {

constexpr std::chrono::milliseconds longestQuestion{200};

}  // namespace

QtItemMenus::QtItemMenus() = default;

QtItemMenus::~QtItemMenus() { answer(false); }

bool QtItemMenus::show(const std::string& destination, const std::string& path, std::chrono::nanoseconds limit) {
    const auto answer = std::make_shared<Answer>();
    auto opens = answer->get_future();
    queue_.async([this, destination, path, answer] {
        open(QString::fromStdString(destination), QString::fromStdString(path), answer);
    });
    return opens.wait_for(limit) != std::future_status::ready || opens.get();
}

Point QtItemMenus::position() {
    const auto ask = [] {
        const QPoint pointer = QCursor::pos();
        return Point{static_cast<double>(pointer.x()), static_cast<double>(pointer.y())};
    };
    if (QThread::currentThread() == thread()) return ask();
    // Only the main thread may ask the toolkit. The wait is bounded, because that thread may be busy, or wait for tasks
    // while the program ends: any position is better than none.
    const auto answer = std::make_shared<std::promise<Point>>();
    auto position = answer->get_future();
    queue_.async([answer, ask] { answer->set_value(ask()); });
    return position.wait_for(longestQuestion) == std::future_status::ready ? position.get() : Point{};
}

void QtItemMenus::open(const QString& destination, const QString& path, std::shared_ptr<Answer> answer) {
    // Whoever has asked for another menu since no longer wants anything else instead of this one.
    this->answer(true);
    awaited_ = std::move(answer);
    anchor_.reset();
    menu_ = std::make_unique<DBusMenu>(QDBusConnection::sessionBus(), destination, path);
    menu_->prepare([this](bool isUsable) {
        this->answer(isUsable);
        if (!isUsable) return discard();
        // Forgotten with the menu, because the next one may have been asked for meanwhile.
        connect(
            &menu_->menu(), &QMenu::aboutToHide, menu_.get(), [this] { close(); }, Qt::QueuedConnection);
        anchor_ = std::make_unique<MenuAnchor>("Menu of a status item");
        anchor_->setMenu(&menu_->menu());
        menu_->menu().popup(QCursor::pos());
    });
}

void QtItemMenus::answer(bool opens) {
    if (awaited_) std::exchange(awaited_, nullptr)->set_value(opens);
}

void QtItemMenus::discard() {
    anchor_.reset();
    // Deleted later, because a menu reports the click after it has begun to hide.
    if (menu_) menu_.release()->deleteLater();
}

void QtItemMenus::close() {
    discard();
    Q_EMIT closed();
}

}  // namespace ovin
