#include "desktop/StatusNotifierHost.h"

#include <QDBusVariant>
#include <algorithm>
#include <set>
#include <utility>

#include "desktop/ItemSequence.h"
#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString daemonName = QStringLiteral("org.freedesktop.DBus");
constexpr auto changesCollected = 10ms;

}  // namespace

StatusNotifierHost::StatusNotifierHost(const QDBusConnection& bus, ItemOrderFile order)
    : bus_(bus), file_(std::move(order)), stored_(file_.load()) {
    updates_.setSingleShot(true);
    updates_.setInterval(changesCollected);
    connect(&updates_, &QTimer::timeout, this, &StatusNotifierHost::update);
    listen();
    join();
}

/// One rule for each of the two interface names asks for the signals of all items, instead of several rules for each item.
void StatusNotifierHost::listen() {
    bus_.connect(daemonName, QStringLiteral("/org/freedesktop/DBus"), daemonName, QStringLiteral("NameOwnerChanged"),
                 {watcherName}, QString(), this, SLOT(watcherOwnerChanged(QString, QString, QString)));
    bus_.connect(watcherName, watcherPath, watcherName, QStringLiteral("StatusNotifierItemRegistered"), this,
                 SLOT(itemRegistered(QString)));
    bus_.connect(watcherName, watcherPath, watcherName, QStringLiteral("StatusNotifierItemUnregistered"), this,
                 SLOT(itemUnregistered(QString)));
    for (const auto* interface : {"org.kde.StatusNotifierItem", "org.freedesktop.StatusNotifierItem"}) {
        bus_.connect(QString(), QString(), QLatin1String(interface), QString(), this, SLOT(itemSignalled(QDBusMessage)));
    }
}

void StatusNotifierHost::join() {
    const auto registration =
        dbusCall(watcherName, watcherPath, watcherName, QStringLiteral("RegisterStatusNotifierHost"), {bus_.baseService()});
    callLater(bus_, registration, untilAnswered, this, [](const QDBusMessage&) {});
    const auto question = dbusCall(watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("Get"), {watcherName, QStringLiteral("RegisteredStatusNotifierItems")});
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) { receiveEntries(answer); });
}

void StatusNotifierHost::receiveEntries(const QDBusMessage& answer) {
    const auto entries = answer.arguments().value(0).value<QDBusVariant>().variant().toStringList();
    for (const QString& entry : entries) itemRegistered(entry);
}

void StatusNotifierHost::watcherOwnerChanged(const QString&, const QString& oldOwner, const QString& newOwner) {
    if (!oldOwner.isEmpty()) removeAll();
    if (!newOwner.isEmpty()) join();
}

void StatusNotifierHost::itemRegistered(const QString& entry) {
    const auto address = statusItemAddress(entry.toStdString(), {});
    const bool isKnown =
        std::any_of(items_.begin(), items_.end(), [&](const auto& item) { return item->address() == address; });
    if (!address || isKnown) return;

    auto item = std::make_unique<StatusItem>(bus_, *address, ++registrations_);
    connect(item.get(), &StatusItem::stateChanged, this, &StatusNotifierHost::itemChanged);
    connect(item.get(), &StatusItem::menuReady, this,
            [this, opened = item.get()](QMenu* menu) { Q_EMIT menuReady(opened, menu); });
    items_.push_back(std::move(item));
}

void StatusNotifierHost::itemUnregistered(const QString& entry) {
    const auto address = statusItemAddress(entry.toStdString(), {});
    const auto item =
        std::find_if(items_.begin(), items_.end(), [&](const auto& candidate) { return candidate->address() == address; });
    if (item == items_.end()) return;
    Q_EMIT itemRemoved(item->get());
    keys_.erase(item->get());
    items_.erase(item);
    itemChanged();
}

void StatusNotifierHost::removeAll() {
    for (const auto& item : items_) Q_EMIT itemRemoved(item.get());
    keys_.clear();
    items_.clear();
    itemChanged();
}

void StatusNotifierHost::itemSignalled(const QDBusMessage& signal) {
    for (const auto& item : items_) {
        if (item->owner() == signal.service() && item->address().path == signal.path().toStdString()) item->changed();
    }
}

void StatusNotifierHost::itemChanged() {
    if (!updates_.isActive()) updates_.start();
}

void StatusNotifierHost::update() {
    assignKeys();
    arrange();
    Q_EMIT itemsChanged();
}

/// An item keeps its key once it has one: a program that renames itself does not jump to another place.
void StatusNotifierHost::assignKeys() {
    std::set<std::string> taken;
    for (const auto& [item, key] : keys_) taken.insert(key);
    for (const auto& item : items_) {
        if (!item->isShown() || keys_.contains(item.get())) continue;
        const auto key = ItemSequence::newKey(item->program().toStdString(), taken);
        taken.insert(key);
        keys_.emplace(item.get(), key);
    }
}

void StatusNotifierHost::arrange() {
    std::vector<ItemSequence::Item> described;
    for (const auto& item : items_) {
        const auto key = keys_.find(item.get());
        described.push_back({key == keys_.end() ? std::string() : key->second, item->registration()});
    }

    std::vector<std::unique_ptr<StatusItem>> arranged;
    for (const std::size_t index : ItemSequence::arranged(described, stored_)) arranged.push_back(std::move(items_[index]));
    items_ = std::move(arranged);
}

std::vector<StatusItem*> StatusNotifierHost::shownItems() const {
    std::vector<StatusItem*> shown;
    for (const auto& item : items_) {
        if (item->isShown() && keys_.contains(item.get())) shown.push_back(item.get());
    }
    return shown;
}

void StatusNotifierHost::move(StatusItem* item, StatusItem* to) {
    const auto at = [this](const StatusItem* wanted) {
        return std::find_if(items_.begin(), items_.end(), [&](const auto& candidate) { return candidate.get() == wanted; });
    };
    const auto from = at(item);
    const auto target = at(to);
    if (from == items_.end() || target == items_.end()) return;
    if (from < target)
        std::rotate(from, from + 1, target + 1);
    else
        std::rotate(target, from, from + 1);

    std::vector<std::string> bar;
    for (const auto* shown : shownItems()) bar.push_back(keys_.at(shown));
    stored_ = ItemSequence::merged(stored_, bar);
    Q_EMIT itemsChanged();
}

void StatusNotifierHost::saveOrder() {
    if (!file_.save(stored_)) qWarning("The order of the status items could not be saved");
}

void StatusNotifierHost::retryItems() {
    for (const auto& item : items_) item->retry();
}

}  // namespace ovin
