#pragma once

#include <QObject>
#include <QString>
#include <future>
#include <memory>

#include "platform/linux/items/ItemMenus.h"
#include "platform/linux/system/QtMainQueue.h"

namespace ovin {

class DBusMenu;
class MenuAnchor;

/// Shows the menus of status items as native ones, at the pointer. Made on the main thread.
class QtItemMenus final : public QObject, public ItemMenus {
    Q_OBJECT

public:
    QtItemMenus();
    ~QtItemMenus() override;

    [[nodiscard]] bool show(const std::string& destination, const std::string& path,
                            std::chrono::nanoseconds limit) override;
    [[nodiscard]] Point position() override;

    /// Whether a menu is open or about to open. Main thread only.
    [[nodiscard]] bool isShowing() const { return menu_ != nullptr; }

Q_SIGNALS:
    /// The menu has closed.
    void closed();

private:
    /// Tells a waiting thread whether a menu opens.
    using Answer = std::promise<bool>;

    void open(const QString& destination, const QString& path, std::shared_ptr<Answer> answer);
    void answer(bool opens);
    void discard();
    void close();

    /// Set while the menu is about to open.
    std::shared_ptr<Answer> awaited_;
    std::unique_ptr<DBusMenu> menu_;
    /// The anchor of the menu, while it is open.
    std::unique_ptr<MenuAnchor> anchor_;
    QtMainQueue queue_;
};

}  // namespace ovin
