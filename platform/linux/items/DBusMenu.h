#pragma once

#include <QDBusConnection>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "platform/linux/items/DBusMenuLayout.h"

namespace ovin {

/// The menu that a program exports as `com.canonical.dbusmenu`, as a native menu here.
///
/// Nothing blocks on the program: the layout is read when the object is made, a menu opens within half a second with what is
/// known, and late answers change the menu in place, open or not. Main thread only.
class DBusMenu : public QObject {
    Q_OBJECT

public:
    DBusMenu(const QDBusConnection& bus, const QString& service, const QString& path);
    ~DBusMenu() override;

    /// Tells the program that its menu is about to be shown, lets it bring the menu up to date, and calls `ready` once,
    /// within half a second, with whether there is anything to show.
    void prepare(std::function<void(bool usable)> ready);

    /// The native menu: the same object for as long as this lives. Its entries report their clicks to the program by
    /// themselves.
    [[nodiscard]] QMenu& menu();

private:
    Q_SLOT void layoutUpdated();
    Q_SLOT void propertiesUpdated(const QDBusMessage& signal);

    void load();
    void loaded(const QDBusMessage& answer);
    void announce(int id, std::function<void()> heard);
    void sendEvent(int id, const QString& event);
    void finishPreparing();

    void fillAll();
    void fill(QMenu& menu, const DBusMenuNode& node);
    QAction& actionAt(QMenu& menu, qsizetype index, bool asSubmenu);
    QAction* newAction(QMenu& menu);
    QAction* newSubmenu(QMenu& menu);

    [[nodiscard]] QDBusMessage call(const QString& method, const QVariantList& arguments) const;

    QDBusConnection bus_;
    QString service_;
    QString path_;
    std::optional<DBusMenuNode> layout_;
    std::unique_ptr<QMenu> menu_;
    std::function<void(bool)> ready_;
    QTimer bound_;
    QTimer updates_;
    bool isLoading_ = false;
    bool isOutdated_ = false;
};

}  // namespace ovin
