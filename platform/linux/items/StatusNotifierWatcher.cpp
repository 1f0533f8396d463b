#include "platform/linux/items/StatusNotifierWatcher.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <utility>

#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString daemonName = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

/// Keeps a program that registers without end from using up the session's memory.
constexpr std::size_t mostItems = 10'000;
constexpr int mostItemsOfOneProgram = 1'000;

constexpr auto exported =
    QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportScriptableSignals | QDBusConnection::ExportAllProperties;

}  // namespace

// Watches the owners of all names with one rule before anything is registered. A rule for each registrant would come too
// late for a program that ends right after its registration, and there would be many of them.
StatusNotifierWatcher::StatusNotifierWatcher(const QDBusConnection& bus) : bus_(bus) {
    bus_.connect(daemonName, daemonPath, daemonName, QStringLiteral("NameOwnerChanged"), this,
                 SLOT(nameOwnerChanged(QString, QString, QString)));
    if (bus_.registerObject(watcherPath, this, exported)) requestName();
}

StatusNotifierWatcher::~StatusNotifierWatcher() {
    if (ownership_ != Ownership::unavailable && bus_.isConnected()) bus_.interface()->unregisterService(watcherName);
    bus_.unregisterObject(watcherPath);
}

void StatusNotifierWatcher::requestName() {
    QDBusConnectionInterface* daemon = bus_.interface();
    if (!daemon) return;
    connect(daemon, &QDBusConnectionInterface::serviceRegistered, this, &StatusNotifierWatcher::becomeOwner);
    const auto reply = daemon->registerService(watcherName, QDBusConnectionInterface::QueueService);
    if (!reply.isValid()) return;
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered) ownership_ = Ownership::owner;
    if (reply.value() == QDBusConnectionInterface::ServiceQueued) ownership_ = Ownership::queued;
}

void StatusNotifierWatcher::becomeOwner(const QString& name) {
    if (name == watcherName) ownership_ = Ownership::owner;
}

QStringList StatusNotifierWatcher::registeredItems() const {
    QStringList entries;
    for (const auto& item : items_) entries += QString::fromStdString(item.joined());
    return entries;
}

/// A call of this program itself does not pass through the bus and has no sender.
QString StatusNotifierWatcher::caller() const {
    const QString sender = calledFromDBus() ? message().service() : QString();
    return sender.isEmpty() ? bus_.baseService() : sender;
}

void StatusNotifierWatcher::RegisterStatusNotifierItem(const QString& serviceOrPath) {
    const std::string sender = caller().toStdString();
    const auto item = statusItemAddress(serviceOrPath.toStdString(), sender);
    if (!item) {
        if (calledFromDBus()) sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("Neither a bus name nor a path"));
    } else if (item->destination == daemonName.toStdString()) {
        // The bus never disconnects, so its items would never be removed.
        if (calledFromDBus()) sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("The bus has no status items"));
    } else if (items_.size() >= mostItems || registrations_.value(caller()) >= mostItemsOfOneProgram) {
        if (calledFromDBus()) sendErrorReply(QDBusError::LimitsExceeded, QStringLiteral("Too many status items"));
    } else if (item->destination == sender) {
        add(*item, caller());
    } else {
        addIfAlive(*item, caller());
    }
}

/// Adds the item if its name has an owner: without one, no signal would ever report the name's end.
void StatusNotifierWatcher::addIfAlive(const StatusItemAddress& item, const QString& registrant) {
    const auto question = dbusCall(daemonName, daemonPath, daemonName, QStringLiteral("GetNameOwner"),
                                   {QString::fromStdString(item.destination)});
    callLater(bus_, question, untilAnswered, this, [this, item, registrant](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ReplyMessage) add(item, registrant);
    });
}

void StatusNotifierWatcher::add(const StatusItemAddress& item, const QString& registrant) {
    const QString entry = QString::fromStdString(item.joined());
    // Checks the limits again, because many registrations may have waited for their answers at once.
    if (entries_.contains(entry) || items_.size() >= mostItems || registrations_[registrant] >= mostItemsOfOneProgram)
        return;
    ++registrations_[registrant];
    entries_.insert(entry);
    items_.push_back(item);
    Q_EMIT StatusNotifierItemRegistered(entry);
}

void StatusNotifierWatcher::RegisterStatusNotifierHost(const QString&) {
    // Notes the connection instead of the name in the argument, because some hosts never own that name.
    if (hosts_.contains(caller())) return;
    hosts_.insert(caller());
    Q_EMIT StatusNotifierHostRegistered();
}

void StatusNotifierWatcher::nameOwnerChanged(const QString& name, const QString& oldOwner, const QString&) {
    if (oldOwner.isEmpty()) return;
    removeItemsOf(name);
    registrations_.remove(name);
    if (hosts_.remove(name)) Q_EMIT StatusNotifierHostUnregistered();
}

void StatusNotifierWatcher::removeItemsOf(const QString& destination) {
    QStringList removed;
    std::erase_if(items_, [&, gone = destination.toStdString()](const StatusItemAddress& item) {
        if (item.destination != gone) return false;
        removed += QString::fromStdString(item.joined());
        return true;
    });
    for (const QString& entry : std::as_const(removed)) entries_.remove(entry);
    for (const QString& entry : std::as_const(removed)) Q_EMIT StatusNotifierItemUnregistered(entry);
}

}  // namespace ovin
