#include "platform/linux/items/DBusMenu.h"

#include <QDBusVariant>
#include <algorithm>
#include <utility>

#include "platform/linux/drawing/MenuLook.h"
#include "platform/linux/items/DBusMenuActions.h"
#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

constexpr auto longestPreparation = 500ms;
constexpr auto updatesCollected = 10ms;
constexpr int longestAnnouncement = 250;

void discard(QMenu& menu, QAction* action) {
    menu.removeAction(action);
    if (action->menu())
        action->menu()->deleteLater();
    else
        action->deleteLater();
}

}  // namespace

DBusMenu::DBusMenu(const QDBusConnection& bus, const QString& service, const QString& path)
    : bus_(bus), service_(service), path_(path) {
    bus_.connect(service, path, menuInterface, QStringLiteral("LayoutUpdated"), this, SLOT(layoutUpdated()));
    bus_.connect(service, path, menuInterface, QStringLiteral("ItemsPropertiesUpdated"), this,
                 SLOT(propertiesUpdated(QDBusMessage)));

    bound_.setSingleShot(true);
    connect(&bound_, &QTimer::timeout, this, &DBusMenu::finishPreparing);
    updates_.setSingleShot(true);
    updates_.setInterval(updatesCollected);
    connect(&updates_, &QTimer::timeout, this, &DBusMenu::load);
    load();
}

DBusMenu::~DBusMenu() = default;

QDBusMessage DBusMenu::call(const QString& method, const QVariantList& arguments) const {
    return dbusCall(service_, path_, menuInterface, method, arguments);
}

void DBusMenu::load() {
    isOutdated_ = isLoading_;
    if (std::exchange(isLoading_, true)) return;
    callLater(bus_, call(QStringLiteral("GetLayout"), {0, -1, QStringList()}), untilAnswered, this,
              [this](const QDBusMessage& answer) { loaded(answer); });
}

void DBusMenu::loaded(const QDBusMessage& answer) {
    isLoading_ = false;
    if (auto layout = readDBusMenuLayout(answer)) layout_ = std::move(layout);
    fillAll();
    finishPreparing();
    // Not at once, because a program whose layout changes all the time would be asked all the time.
    if (isOutdated_) layoutUpdated();
}

void DBusMenu::layoutUpdated() {
    if (!updates_.isActive()) updates_.start();
}

void DBusMenu::propertiesUpdated(const QDBusMessage& signal) {
    if (!layout_) return;
    applyDBusMenuUpdates(*layout_, signal);
    fillAll();
}

void DBusMenu::prepare(std::function<void(bool)> ready) {
    finishPreparing();
    static_cast<void>(menu());
    ready_ = std::move(ready);
    bound_.start(longestPreparation);
    announce(0, [this] { load(); });
}

void DBusMenu::finishPreparing() {
    if (!ready_) return;
    bound_.stop();
    std::exchange(ready_, nullptr)(layout_ && !layout_->children.empty());
}

/// Ignores the answer, which says whether the layout needs to be read again, because it is often wrong.
void DBusMenu::announce(int id, std::function<void()> heard) {
    callLater(bus_, call(QStringLiteral("AboutToShow"), {id}), longestAnnouncement, this,
              [heard = std::move(heard)](const QDBusMessage&) { heard(); });
}

void DBusMenu::sendEvent(int id, const QString& event) {
    const QVariant noData = QVariant::fromValue(QDBusVariant(QString()));
    bus_.send(call(QStringLiteral("Event"), {id, event, noData, QVariant::fromValue(quint32{0})}));
}

QMenu& DBusMenu::menu() {
    if (!menu_) {
        menu_ = std::make_unique<QMenu>();
        giveMenuLook(*menu_);
        connect(menu_.get(), &QMenu::aboutToShow, this, [this] { sendEvent(0, QStringLiteral("opened")); });
        connect(menu_.get(), &QMenu::aboutToHide, this, [this] { sendEvent(0, QStringLiteral("closed")); });
        fillAll();
    }
    return *menu_;
}

void DBusMenu::fillAll() {
    if (menu_ && layout_) fill(*menu_, *layout_);
}

/// Reuses the action at each place, so that an open menu neither flickers nor loses the entry under the pointer, even when
/// the program changes all ids.
void DBusMenu::fill(QMenu& menu, const DBusMenuNode& node) {
    qsizetype index = 0;
    for (const auto& entry : node.children) {
        QAction& action = actionAt(menu, index++, entry.isSubmenu());
        showMenuEntry(menu, action, entry);
        if (action.menu()) fill(*action.menu(), entry);
    }
    const auto actions = menu.actions();
    for (; index < actions.size(); ++index) discard(menu, actions[index]);
}

QAction& DBusMenu::actionAt(QMenu& menu, qsizetype index, bool asSubmenu) {
    QAction* present = menu.actions().value(index);
    if (present && (present->menu() != nullptr) == asSubmenu) return *present;
    QAction* action = asSubmenu ? newSubmenu(menu) : newAction(menu);
    menu.insertAction(present, action);
    if (present) discard(menu, present);
    return *action;
}

QAction* DBusMenu::newAction(QMenu& menu) {
    auto* action = new QAction(&menu);
    connect(action, &QAction::triggered, this, [this, action] {
        menu_->close();  // An assistive program does not close it.
        sendEvent(action->data().toInt(), QStringLiteral("clicked"));
        fillAll();  // Undoes Qt's toggle of a check mark: only the program knows its state.
    });
    return action;
}

QAction* DBusMenu::newSubmenu(QMenu& menu) {
    auto* submenu = new QMenu(&menu);
    QAction* action = submenu->menuAction();
    connect(submenu, &QMenu::aboutToShow, this, [this, action] {
        announce(action->data().toInt(), [this] { load(); });
        sendEvent(action->data().toInt(), QStringLiteral("opened"));
    });
    connect(submenu, &QMenu::aboutToHide, this,
            [this, action] { sendEvent(action->data().toInt(), QStringLiteral("closed")); });
    return action;
}

}  // namespace ovin
