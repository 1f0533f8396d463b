#include "platform/linux/items/DBusMenu.h"

#include <QDBusVariant>
#include <QPointer>
#include <QThreadPool>
#include <algorithm>
#include <utility>

#include "platform/linux/drawing/IconLoader.h"
#include "platform/linux/drawing/MenuLook.h"
#include "platform/linux/items/DBusMenuActions.h"
#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

constexpr auto longestPreparation = 500ms;
/// How long changes are collected: twice as long as the last time if they come at once again, else half as long.
constexpr std::chrono::milliseconds shortestPause = 10ms;
constexpr std::chrono::milliseconds longestPause = 1s;
constexpr auto atOnce = 100ms;
constexpr int longestAnnouncement = 250;
/// The toolkit measures all entries of a list before it shows the first.
constexpr std::size_t mostShown = 500;

void discard(QMenu& menu, QAction* action) {
    menu.removeAction(action);
    if (action->menu())
        action->menu()->deleteLater();
    else
        action->deleteLater();
}

const DBusMenuNode* nodeOf(const DBusMenuNode& node, int id) {
    if (node.entry.id == id) return &node;
    for (const auto& child : node.children) {
        if (const auto* found = nodeOf(child, id)) return found;
    }
    return nullptr;
}

}  // namespace

DBusMenu::DBusMenu(const QDBusConnection& bus, const QString& service, const QString& path)
    : bus_(bus), service_(service), path_(path), program_(service, bus) {
    connect(&program_, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
        layout_.reset();
        finishPreparing();
        if (menu_) menu_->close();
    });
    bound_.setSingleShot(true);
    connect(&bound_, &QTimer::timeout, this, &DBusMenu::finishPreparing);
    if (const auto* icons = IconLoader::shared()) connect(icons, &IconLoader::loaded, this, &DBusMenu::fillAll);
    updates_.setSingleShot(true);
    connect(&updates_, &QTimer::timeout, this, &DBusMenu::load);
    load();
}

QDBusMessage DBusMenu::call(const QString& method, const QVariantList& arguments) const {
    return dbusCall(service_, path_, menuInterface, method, arguments);
}

/// What happens while nobody listens is in the next layout.
void DBusMenu::listen(bool toSignals) {
    if (std::exchange(isListening_, toSignals) == toSignals) return;
    for (const char* signal : {"LayoutUpdated", "ItemsPropertiesUpdated"}) {
        if (toSignals)
            bus_.connect(service_, path_, menuInterface, QLatin1String(signal), this, SLOT(changed()));
        else
            bus_.disconnect(service_, path_, menuInterface, QLatin1String(signal), this, SLOT(changed()));
    }
}

void DBusMenu::changed() {
    listen(false);
    isOutdated_ = isLoading_;
    if (isLoading_ || updates_.isActive()) return;
    const bool isHurried = sinceLoaded_.isValid() && !sinceLoaded_.hasExpired(std::chrono::milliseconds(atOnce).count());
    pause_ = std::clamp(isHurried ? pause_ * 2 : pause_ / 2, shortestPause, longestPause);
    updates_.start(pause_);
}

void DBusMenu::load() {
    isOutdated_ = isLoading_;
    if (std::exchange(isLoading_, true)) return;
    updates_.stop();
    listen(true);
    callLater(bus_, call(QStringLiteral("GetLayout"), {0, -1, QStringList()}), untilAnswered, this,
              [self = QPointer(this)](const QDBusMessage& answer) {
                  // Elsewhere, because a program may send a layout that takes long to read.
                  QThreadPool::globalInstance()->start([self, answer] {
                      auto layout = readDBusMenuLayout(answer);
                      QMetaObject::invokeMethod(qApp, [self, layout = std::move(layout)]() mutable {
                          if (self) self->loaded(std::move(layout));
                      });
                  });
              });
}

void DBusMenu::loaded(std::optional<DBusMenuNode> layout) {
    isLoading_ = false;
    if (layout) layout_ = std::move(layout);
    fillAll();
    sinceLoaded_.start();
    // A program may fill its menu only when that is about to show: an empty one counts as read after that.
    if ((layout_ && !layout_->children.empty()) || (isAnnounced_ && !isOutdated_)) finishPreparing();
    // Not at once, because a program whose layout changes all the time would be asked all the time.
    if (isOutdated_) changed();
}

void DBusMenu::prepare(std::function<void(bool)> ready) {
    finishPreparing();
    static_cast<void>(menu());
    ready_ = std::move(ready);
    bound_.start(longestPreparation);
    announce(0);
}

void DBusMenu::finishPreparing() {
    if (!ready_) return;
    bound_.stop();
    std::exchange(ready_, nullptr)(layout_ && !layout_->children.empty());
}

/// Reads the layout again whatever the answer is, which says whether that needs to be, because it is often wrong.
void DBusMenu::announce(int id) {
    callLater(bus_, call(QStringLiteral("AboutToShow"), {id}), longestAnnouncement, this, [this](const QDBusMessage&) {
        isAnnounced_ = true;
        load();
    });
}

void DBusMenu::sendEvent(int id, const QString& event) {
    const QVariant noData = QVariant::fromValue(QDBusVariant(QString()));
    bus_.send(call(QStringLiteral("Event"), {id, event, noData, QVariant::fromValue(quint32{0})}));
}

QMenu& DBusMenu::menu() {
    if (!menu_) {
        menu_ = std::make_unique<DBusMenuList>();
        giveMenuLook(*menu_);
        connect(menu_.get(), &QMenu::aboutToShow, this, [this] { sendEvent(0, QStringLiteral("opened")); });
        connect(menu_.get(), &QMenu::aboutToHide, this, [this] { sendEvent(0, QStringLiteral("closed")); });
        fillAll();
    }
    return *menu_;
}

void DBusMenu::fillAll() {
    if (menu_ && layout_) fill(*menu_, *layout_, 0);
}

/// Reuses the action at each place, so that an open menu neither flickers nor loses the entry under the pointer, even when
/// the program changes all ids. Fills submenus only while they are open.
void DBusMenu::fill(DBusMenuList& menu, const DBusMenuNode& node, std::size_t first) {
    menu.change([&] {
        const std::size_t end = std::min(node.children.size(), first + mostShown);
        qsizetype index = 0;
        for (std::size_t i = first; i < end; ++i) show(menu, index++, node.children[i].entry, node.children[i], 0);
        if (end < node.children.size()) {
            DBusMenuEntry more;
            more.id = node.entry.id;
            more.label = QStringLiteral("More");
            more.isSubmenu = true;
            show(menu, index++, more, node, end);
        }
        const auto actions = menu.actions();
        for (; index < actions.size(); ++index) discard(menu, actions[index]);
    });
}

/// Shows an entry at a place, and in its submenu the entries `below` from `first` on.
void DBusMenu::show(DBusMenuList& menu, qsizetype index, const DBusMenuEntry& entry, const DBusMenuNode& below,
                    std::size_t first) {
    QAction& action = actionAt(menu, index, entry.isSubmenu);
    showMenuEntry(menu, action, entry);
    auto* const submenu = qobject_cast<DBusMenuList*>(action.menu());
    if (!submenu) return;
    submenu->content = {entry.id, first};
    if (submenu->isVisible()) fill(*submenu, below, first);
}

QAction& DBusMenu::actionAt(DBusMenuList& menu, qsizetype index, bool asSubmenu) {
    QAction* present = menu.actions().value(index);
    if (present && (present->menu() != nullptr) == asSubmenu) return *present;
    QAction* action = asSubmenu ? newSubmenu(menu) : newAction(menu);
    menu.insertAction(present, action);
    if (present) discard(menu, present);
    return *action;
}

QAction* DBusMenu::newAction(DBusMenuList& menu) {
    auto* action = new QAction(&menu);
    connect(action, &QAction::triggered, this, [this, action] {
        menu_->close();  // An assistive program does not close it.
        sendEvent(shownMenuEntry(*action).id, QStringLiteral("clicked"));
        fillAll();  // Undoes Qt's toggle of a check mark: only the program knows its state.
    });
    return action;
}

QAction* DBusMenu::newSubmenu(DBusMenuList& menu) {
    auto* submenu = new DBusMenuList(&menu);
    connect(submenu, &QMenu::aboutToShow, this, [this, submenu] {
        const auto [parent, first] = submenu->content;
        if (const auto* node = layout_ ? nodeOf(*layout_, parent) : nullptr) fill(*submenu, *node, first);
        if (first > 0) return;  // the program knows nothing of parts
        announce(parent);
        sendEvent(parent, QStringLiteral("opened"));
    });
    connect(submenu, &QMenu::aboutToHide, this, [this, submenu] {
        if (submenu->content.first == 0) sendEvent(submenu->content.parent, QStringLiteral("closed"));
    });
    return submenu->menuAction();
}

}  // namespace ovin
