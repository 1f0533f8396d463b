#pragma once

#include <QDBusConnection>
#include <QTimer>
#include <QVariant>

#include "tests/contract/StagedUser.h"

namespace ovin {

/// Sees the item as a bar does, over a connection of its own, and this program's windows as the toolkit shows them.
class LinuxUser final : public StagedUser {
public:
    LinuxUser();
    ~LinuxUser() override;

    [[nodiscard]] std::vector<std::string> items() override;
    void clickItem(StatusItemClick click) override;
    void willChoose(const std::string& title) override;

    [[nodiscard]] std::vector<Alert> acknowledged() override;

    [[nodiscard]] std::vector<Rect> windows() override;
    void click(int tag) override;
    void moveWindow(Point origin) override;
    void closeWindow() override;

    void pressElsewhere(MouseButton button) override;

private:
    [[nodiscard]] QVariant property(const QString& address, const QString& interface, const QString& name);
    /// The addresses of this program's items, each the name of a connection and a path.
    [[nodiscard]] QStringList addresses();

    QDBusConnection bus_;
    /// Looks for a menu.
    QTimer choice_;
    std::vector<Alert> acknowledged_;
};

}  // namespace ovin
