#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/linux/items/StatusItemAddress.h"
#include "platform/linux/items/WatcherClaim.h"

namespace ovin {

/// The meeting place of status items and the programs that show them: `org.kde.StatusNotifierWatcher` on a session bus.
/// This program is the host as well, so that programs that look for one show their items.
///
/// Owns the name only while no other program is the watcher or wants to be it (`WatcherClaim`). When another program takes
/// over, it is told of the items that would not register with it by themselves. Main thread only.
class StatusNotifierWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    /// `queue` must outlive this object.
    StatusNotifierWatcher(const QDBusConnection& bus, MainQueue& queue, WatcherClaim::Begin begin);
    ~StatusNotifierWatcher() override;

    /// Whether programs register here.
    [[nodiscard]] bool isOwner() const { return claim_.isOwner(); }
    /// Whether a program besides this one has registered as a host.
    [[nodiscard]] bool hasBar() const { return !hosts_.isEmpty(); }
    [[nodiscard]] QStringList registeredItems() const;
    [[nodiscard]] bool isHostRegistered() const { return true; }
    [[nodiscard]] int protocolVersion() const { return 0; }

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& serviceOrPath);
    Q_SCRIPTABLE void RegisterStatusNotifierHost(const QString& service);

Q_SIGNALS:
    Q_SCRIPTABLE void StatusNotifierItemRegistered(const QString& item);
    Q_SCRIPTABLE void StatusNotifierItemUnregistered(const QString& item);
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private:
    /// An item, and the unique name of the program that registered it: empty once that program has gone, where the item is
    /// another's.
    struct Registration {
        StatusItemAddress item;
        QString registrant;
    };

    Q_SLOT void nameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);
    Q_SLOT void hostRegistered(const QDBusMessage& signal);
    Q_SLOT void extensionChanged();

    [[nodiscard]] bool take();
    void askWhoWaits();
    void awaitRivals();
    void awaitStart(const QString& rival, const QString& owner);
    void ownerChanged(const QString& newOwner);
    void handOver();
    [[nodiscard]] QString caller() const;
    void addIfAlive(const StatusItemAddress& item, const QString& registrant);
    void add(const StatusItemAddress& item, const QString& registrant);
    [[nodiscard]] bool hasRoomFor(const QString& registrant) const;
    void remove(const std::function<bool(const Registration&)>& isGone);
    void disown(const QString& registrant);

    QDBusConnection bus_;
    WatcherClaim claim_;
    std::vector<Registration> items_;
    /// The addresses in `items_`, to find a repeated registration at once.
    QSet<QString> entries_;
    QSet<QString> hosts_;
    /// How many of the items each program has registered, so that no program uses up the limit for all.
    QHash<QString, int> registrations_;
};

}  // namespace ovin
