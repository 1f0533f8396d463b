#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>

#include "platform/Menu.h"

namespace ovin {

/// An entry of a menu as the bus carries it, with the entries below it.
struct BusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};

/// The properties of one entry of a menu as the bus carries them.
struct BusMenuProperties {
    int id = 0;
    QVariantMap properties;
};
using BusMenuGroup = QList<BusMenuProperties>;

/// What happened to one entry of a menu.
struct BusMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};
using BusMenuEvents = QList<BusMenuEvent>;

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuEvent& event);

/// The menu of this program's status item, for bars that draw such menus themselves: `com.canonical.dbusmenu`. Entries have
/// the ids 1, 2, 3 … from top to bottom, separators included; 0 is the menu itself. Shortcuts are not told, because they
/// would not work there. Main thread only.
class MenuObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    MenuObject();

    /// Sets what makes the menu. It is called whenever a bar may look at the menu.
    void setMenu(std::function<Menu()> make);
    /// Makes the menu anew and tells bars if it has changed; returns whether it has.
    bool refresh();

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const { return "ltr"; }
    [[nodiscard]] QString status() const { return "normal"; }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    Q_SCRIPTABLE uint GetLayout(int parent, int depth, const QStringList& names, ovin::BusMenuLayout& layout);
    Q_SCRIPTABLE ovin::BusMenuGroup GetGroupProperties(const QList<int>& ids, const QStringList& names);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString& name);
    Q_SCRIPTABLE void Event(int id, const QString& name, const QDBusVariant& data, uint timestamp);
    Q_SCRIPTABLE QList<int> EventGroup(const ovin::BusMenuEvents& events);
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);

Q_SIGNALS:
    Q_SCRIPTABLE void ItemsPropertiesUpdated(const ovin::BusMenuGroup& updated, const ovin::BusMenuGroup& removed);
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);

private:
    [[nodiscard]] bool has(int id) const { return id >= 0 && id <= static_cast<int>(menu_.size()); }
    [[nodiscard]] QVariantMap properties(int id, const QStringList& names) const;
    [[nodiscard]] BusMenuLayout layoutOf(int id, const QStringList& names) const;

    std::function<Menu()> make_;
    Menu menu_;
    uint revision_ = 1;
};

}  // namespace ovin
