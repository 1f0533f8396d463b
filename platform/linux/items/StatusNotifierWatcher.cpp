#include "platform/linux/items/StatusNotifierWatcher.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <utility>

#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString daemonName = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

/// Programs whose watcher asks for the name when they start, and never again. On a busy machine that takes long, and they
/// answer nothing before.
const QStringList asksOnce{QStringLiteral("org.kde.kded5"), QStringLiteral("org.kde.kded6")};
constexpr int longestStart = 60'000;  // milliseconds

/// Keeps programs that register without end from using up the session's memory. However many items others have, each program
/// may have a few.
constexpr std::size_t mostItems = 10'000;
constexpr int mostItemsOfOneProgram = 1'000;
constexpr int fewItems = 20;

constexpr auto exported =
    QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportScriptableSignals | QDBusConnection::ExportAllProperties;

}  // namespace

// Watches the owners of all names with one rule before anything is registered. A rule for each registrant would come too
// late for a program that ends right after its registration, and there would be many of them.
StatusNotifierWatcher::StatusNotifierWatcher(const QDBusConnection& bus, MainQueue& queue, WatcherClaim::Begin begin)
    : bus_(bus),
      claim_(queue, bus.baseService().toStdString(),
             {[this] { return take(); }, [this] { bus_.interface()->unregisterService(watcherName); },
              [this] { askWhoWaits(); },
              [this](const std::string& program) {
                  return bus_.interface()->isServiceRegistered(QString::fromStdString(program)).value();
              }}) {
    if (!bus_.isConnected() || !bus_.registerObject(watcherPath, this, exported)) return;
    bus_.connect(daemonName, daemonPath, daemonName, QStringLiteral("NameOwnerChanged"), this,
                 SLOT(nameOwnerChanged(QString, QString, QString)));
    // Bars that wait for the name tell it all the same when they become the host of their own watcher.
    bus_.connect(QString(), watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"), this,
                 SLOT(hostRegistered(QDBusMessage)));
    // While the name is taken, an extension of GNOME that is switched on again, as after each lock of the screen, does not
    // even ask for it.
    bus_.connect(QStringLiteral("org.gnome.Shell"), QString(), QStringLiteral("org.gnome.Shell.Extensions"),
                 QStringLiteral("ExtensionStateChanged"), this, SLOT(extensionChanged()));
    claim_.begin(bus_.interface()->serviceOwner(watcherName).value().toStdString(), begin);
    if (begin == WatcherClaim::Begin::afterGrace) awaitRivals();
}

StatusNotifierWatcher::~StatusNotifierWatcher() {
    if (bus_.isConnected() && isOwner()) bus_.interface()->unregisterService(watcherName);
    bus_.unregisterObject(watcherPath);
}

bool StatusNotifierWatcher::take() {
    const auto reply = bus_.interface()->registerService(watcherName, QDBusConnectionInterface::DontQueueService,
                                                         QDBusConnectionInterface::AllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

void StatusNotifierWatcher::askWhoWaits() {
    const auto question = dbusCall(daemonName, daemonPath, daemonName, QStringLiteral("ListQueuedOwners"), {watcherName});
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        QStringList waiting = answer.arguments().value(0).toStringList();
        waiting.removeAll(bus_.baseService());
        claim_.told(!waiting.isEmpty());
    });
}

/// For those that are starting already.
void StatusNotifierWatcher::awaitRivals() {
    for (const QString& rival : asksOnce) {
        callLater(bus_, dbusCall(daemonName, daemonPath, daemonName, QStringLiteral("GetNameOwner"), {rival}), untilAnswered,
                  this, [this, rival](const QDBusMessage& answer) {
                      if (answer.type() == QDBusMessage::ReplyMessage)
                          awaitStart(rival, answer.arguments().value(0).toString());
                  });
    }
}

void StatusNotifierWatcher::awaitStart(const QString& rival, const QString& owner) {
    claim_.rivalIsComing(owner.toStdString());
    const auto question = dbusCall(rival, QStringLiteral("/MainApplication"),
                                   QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                   {QStringLiteral("org.qtproject.Qt.QCoreApplication"), QStringLiteral("applicationName")});
    callLater(bus_, question, longestStart, this,
              [this, owner](const QDBusMessage&) { claim_.isNoRival(owner.toStdString()); });
}

void StatusNotifierWatcher::hostRegistered(const QDBusMessage& signal) {
    if (signal.service() != bus_.baseService()) claim_.barMayCome(signal.service().toStdString());
}

void StatusNotifierWatcher::extensionChanged() { claim_.rivalIsComing(); }

QStringList StatusNotifierWatcher::registeredItems() const {
    QStringList entries;
    for (const auto& known : items_) entries += QString::fromStdString(known.item.joined());
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
    } else if (!hasRoomFor(caller())) {
        if (calledFromDBus()) sendErrorReply(QDBusError::LimitsExceeded, QStringLiteral("Too many status items"));
    } else if (item->destination == sender) {
        add(*item, caller());
    } else {
        addIfAlive(*item, caller());
    }
}

/// Adds the item if its name has an owner: without one, no signal would ever report the name's end.
void StatusNotifierWatcher::addIfAlive(const StatusItemAddress& item, const QString& registrant) {
    // Notes that the registrant is here, so that its end takes the note away.
    registrations_.insert(registrant, registrations_.value(registrant));
    const auto question = dbusCall(daemonName, daemonPath, daemonName, QStringLiteral("GetNameOwner"),
                                   {QString::fromStdString(item.destination)});
    callLater(bus_, question, untilAnswered, this, [this, item, registrant](const QDBusMessage& answer) {
        // Nothing would ever tell that the registrant has gone if it has by now.
        const bool isThere = registrations_.contains(registrant);
        if (answer.type() == QDBusMessage::ReplyMessage) add(item, isThere ? registrant : QString());
    });
}

void StatusNotifierWatcher::add(const StatusItemAddress& item, const QString& registrant) {
    const QString entry = QString::fromStdString(item.joined());
    // Checks the limits again, because many registrations may have waited for their answers at once.
    if (entries_.contains(entry) || !hasRoomFor(registrant)) return;
    ++registrations_[registrant];
    entries_.insert(entry);
    items_.push_back({item, registrant});
    Q_EMIT StatusNotifierItemRegistered(entry);
}

bool StatusNotifierWatcher::hasRoomFor(const QString& registrant) const {
    return registrations_.value(registrant) < (items_.size() < mostItems ? mostItemsOfOneProgram : fewItems);
}

void StatusNotifierWatcher::RegisterStatusNotifierHost(const QString&) {
    claim_.barMayCome(caller().toStdString());
    // Notes the connection instead of the name in the argument, because some hosts never own that name.
    if (hosts_.contains(caller())) return;
    hosts_.insert(caller());
    Q_EMIT StatusNotifierHostRegistered();
}

void StatusNotifierWatcher::nameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner) {
    if (name == watcherName) return ownerChanged(newOwner);
    if (asksOnce.contains(name) && !newOwner.isEmpty()) return awaitStart(name, newOwner);
    if (oldOwner.isEmpty()) return claim_.barMayCome(newOwner.toStdString());
    claim_.isNoRival(name.toStdString());
    remove([gone = name.toStdString()](const Registration& known) { return known.item.destination == gone; });
    if (registrations_.contains(name)) disown(name);
    if (hosts_.remove(name)) Q_EMIT StatusNotifierHostUnregistered();
}

void StatusNotifierWatcher::ownerChanged(const QString& newOwner) {
    claim_.ownerChanged(newOwner.toStdString());
    if (isOwner()) return;
    if (!newOwner.isEmpty()) handOver();
    // Whoever registers here registers anew when this program becomes the watcher again.
    items_.clear();
    entries_.clear();
    registrations_.clear();
    hosts_.clear();
}

/// Programs that use Qt register only with a watcher that comes when there was none, and their items are at the customary
/// path, so that they can be registered by others. Registering an item twice does no harm.
void StatusNotifierWatcher::handOver() {
    for (const auto& [item, registrant] : items_) {
        if (item.path != customaryItemPath) continue;
        const QString destination = QString::fromStdString(item.destination);
        static_cast<void>(bus_.send(
            dbusCall(watcherName, watcherPath, watcherName, QStringLiteral("RegisterStatusNotifierItem"), {destination})));
    }
}

void StatusNotifierWatcher::remove(const std::function<bool(const Registration&)>& isGone) {
    QStringList removed;
    std::erase_if(items_, [&](const Registration& known) {
        if (!isGone(known)) return false;
        --registrations_[known.registrant];
        removed += QString::fromStdString(known.item.joined());
        return true;
    });
    for (const QString& entry : std::as_const(removed)) entries_.remove(entry);
    for (const QString& entry : std::as_const(removed)) Q_EMIT StatusNotifierItemUnregistered(entry);
}

/// Keeps what a program that has gone registered for others, as a watcher does that hands over; but of all these together no
/// more than one program may have, because such programs may come and go without end.
void StatusNotifierWatcher::disown(const QString& registrant) {
    for (Registration& known : items_) {
        if (known.registrant != registrant || !hasRoomFor({})) continue;
        known.registrant.clear();
        ++registrations_[QString()];
        --registrations_[registrant];
    }
    remove([&](const Registration& known) { return known.registrant == registrant; });
    registrations_.remove(registrant);
}

}  // namespace ovin
