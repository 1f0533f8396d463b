#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desktop/ItemOrderFile.h"
#include "desktop/StatusItem.h"

namespace ovin {

/// The status items of the session, whichever program is the watcher, in the order of the bar.
class StatusNotifierHost : public QObject {
    Q_OBJECT

public:
    StatusNotifierHost(const QDBusConnection& bus, ItemOrderFile order);

    /// The items to show, from left to right.
    [[nodiscard]] std::vector<StatusItem*> shownItems() const;

    /// Moves an item to the place of another one; the others close up. `saveOrder` keeps the result.
    void move(StatusItem* item, StatusItem* to);
    void saveOrder();

    /// Asks again those items that have not said anything about themselves.
    void retryItems();

Q_SIGNALS:
    /// Items, their states or their order have changed, once for whatever happened within about 10 ms.
    void itemsChanged();
    void menuReady(StatusItem* item, QMenu* menu);
    /// The item is deleted right after.
    void itemRemoved(StatusItem* item);

private:
    Q_SLOT void watcherOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);
    Q_SLOT void itemRegistered(const QString& entry);
    Q_SLOT void itemUnregistered(const QString& entry);
    Q_SLOT void itemSignalled(const QDBusMessage& signal);

    void listen();
    void join();
    void receiveEntries(const QDBusMessage& answer);
    void removeAll();
    void itemChanged();
    void update();
    void assignKeys();
    void arrange();

    QDBusConnection bus_;
    ItemOrderFile file_;
    std::vector<std::string> stored_;
    /// All items in the order of the bar.
    std::vector<std::unique_ptr<StatusItem>> items_;
    std::map<const StatusItem*, std::string> keys_;
    std::uint64_t registrations_ = 0;
    QTimer updates_;
};

}  // namespace ovin
