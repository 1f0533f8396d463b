#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/linux/items/DBusMenuLayout.h"
#include "platform/linux/items/DBusMenuList.h"

namespace ovin {

/// The menu that a program exports as `com.canonical.dbusmenu`, as a native menu here.
///
/// Nothing blocks on the program: the layout is read when the object is made, a menu opens within half a second with what is
/// known, and late answers change the menu in place, open or not. A program that tells of changes all the time is listened
/// to now and then; the menu of one that has ended closes. A long list shows its first entries, and the rest below the last.
/// Main thread only.
class DBusMenu : public QObject {
    Q_OBJECT

public:
    DBusMenu(const QDBusConnection& bus, const QString& service, const QString& path);

    /// Tells the program that its menu is about to be shown, lets it bring the menu up to date, and calls `ready` once,
    /// within half a second, with whether there is anything to show.
    void prepare(std::function<void(bool usable)> ready);

    /// The native menu: the same object for as long as this lives. Its entries report their clicks to the program by
    /// themselves.
    [[nodiscard]] QMenu& menu();

private:
    Q_SLOT void changed();

    void listen(bool toSignals);
    void load();
    void loaded(std::optional<DBusMenuNode> layout);
    void announce(int id);
    void sendEvent(int id, const QString& event);
    void finishPreparing();

    void fillAll();
    void fill(DBusMenuList& menu, const DBusMenuNode& node, std::size_t first);
    void show(DBusMenuList& menu, qsizetype index, const DBusMenuEntry& entry, const DBusMenuNode& below, std::size_t first);
    QAction& actionAt(DBusMenuList& menu, qsizetype index, bool asSubmenu);
    QAction* newAction(DBusMenuList& menu);
    QAction* newSubmenu(DBusMenuList& menu);

    [[nodiscard]] QDBusMessage call(const QString& method, const QVariantList& arguments) const;

    QDBusConnection bus_;
    QString service_;
    QString path_;
    std::optional<DBusMenuNode> layout_;
    std::unique_ptr<DBusMenuList> menu_;
    std::function<void(bool)> ready_;
    QDBusServiceWatcher program_;
    QTimer bound_;
    QTimer updates_;
    QElapsedTimer sinceLoaded_;
    std::chrono::milliseconds pause_{0};
    bool isListening_ = false;
    /// Whether the program has had its time to bring the menu up to date.
    bool isAnnounced_ = false;
    bool isLoading_ = false;
    bool isOutdated_ = false;
};

}  // namespace ovin
