#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "desktop/StatusItemState.h"
#include "platform/linux/items/DBusMenu.h"
#include "platform/linux/items/StatusItemAddress.h"

namespace ovin {

/// A status item of another program. It stays an item however little the program answers.
class StatusItem : public QObject {
    Q_OBJECT

public:
    StatusItem(const QDBusConnection& bus, StatusItemAddress address, std::uint64_t registration);

    [[nodiscard]] const StatusItemAddress& address() const { return address_; }
    [[nodiscard]] std::uint64_t registration() const { return registration_; }
    [[nodiscard]] const StatusItemState& state() const { return state_; }
    /// Whether the bar should show the item: it has answered, or has had time enough, and does not want to be hidden.
    [[nodiscard]] bool isShown() const { return isReady_ && state_.status != StatusItemState::Status::passive; }
    /// Grows with each change of the state or the title.
    [[nodiscard]] std::uint64_t revision() const { return revision_; }
    /// The title for people; never empty.
    [[nodiscard]] QString title() const;
    /// The program's name for the order of the items: the one that it gives, or else its process's name.
    [[nodiscard]] QString program() const { return state_.id.isEmpty() ? processName_ : state_.id; }
    /// The unique name of the connection that serves the item; empty while unknown.
    [[nodiscard]] const QString& owner() const { return owner_; }

    /// The item's state may have changed: read it again soon.
    void changed();
    /// Reads the state if the last attempt brought none.
    void retry();

    /// Clicks, `where` in the X server's pixels. A menu, where that is what the click opens, comes with `menuReady`.
    void leftClick(QPoint where) { follow(leftClickRequests(state_.clickTraits), where); }
    void rightClick(QPoint where) { follow(rightClickRequests(state_.clickTraits), where); }
    void middleClick(QPoint where) { follow({StatusItemRequest::secondaryActivate}, where); }
    void scroll(int delta, Qt::Orientation orientation);

Q_SIGNALS:
    void stateChanged();
    void menuReady(QMenu* menu);

private:
    void resolveOwner();
    void readProcessName();
    void read();
    void readAll(const QString& interface);
    void receive(const QString& interface, const QDBusMessage& answer);
    void show(const QVariantMap& properties);
    void becomeReady();
    void announceChange();
    void retryLater();
    void followMenu();

    void follow(std::vector<StatusItemRequest> requests, QPoint where);
    void openMenu(std::vector<StatusItemRequest> otherwise, QPoint where);
    [[nodiscard]] QDBusMessage call(const QString& method, const QVariantList& arguments) const;

    QDBusConnection bus_;
    StatusItemAddress address_;
    std::uint64_t registration_;
    std::uint64_t revision_ = 0;
    QString owner_;
    QString processName_;
    QString interface_;
    StatusItemState state_;
    std::unique_ptr<DBusMenu> menu_;
    QString menuPath_;
    QTimer updates_;
    QTimer patience_;
    bool isReady_ = false;
    bool isReading_ = false;
    bool isOutdated_ = false;
    bool hasState_ = false;
    int failures_ = 0;
};

}  // namespace ovin
