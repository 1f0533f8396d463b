#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/linux/items/StatusItemAddress.h"

namespace ovin {

/// The meeting place of status items and the programs that show them: `org.kde.StatusNotifierWatcher` on a session bus.
///
/// Serves for as long as it exists. While another program owns the name it waits in the bus's queue, and no program sees it.
class StatusNotifierWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registeredItems)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    enum class Ownership {
        /// Programs register here.
        owner,
        /// Another program is the watcher; this one takes over when that program ends.
        queued,
        /// The bus refused the name: there is no bus, or it has a rule against it.
        unavailable,
    };

    explicit StatusNotifierWatcher(const QDBusConnection& bus);
    ~StatusNotifierWatcher() override;

    [[nodiscard]] Ownership ownership() const { return ownership_; }
    [[nodiscard]] QStringList registeredItems() const;
    [[nodiscard]] bool isHostRegistered() const { return !hosts_.isEmpty(); }
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
    Q_SLOT void nameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

    void requestName();
    void becomeOwner(const QString& name);
    [[nodiscard]] QString caller() const;
    void addIfAlive(const StatusItemAddress& item, const QString& registrant);
    void add(const StatusItemAddress& item, const QString& registrant);
    void removeItemsOf(const QString& destination);

    QDBusConnection bus_;
    Ownership ownership_ = Ownership::unavailable;
    std::vector<StatusItemAddress> items_;
    /// The addresses in `items_`, to find a repeated registration at once.
    QSet<QString> entries_;
    QSet<QString> hosts_;
    /// How many items each program has registered, so that no program uses up the limit for all.
    QHash<QString, int> registrations_;
};

}  // namespace ovin
