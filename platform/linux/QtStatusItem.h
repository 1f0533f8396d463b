#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QMenu>
#include <QPoint>
#include <memory>

#include "platform/StatusItem.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/StatusNotifierObject.h"

namespace ovin {

/// This program's status item. It registers with the session's watcher, and again with every new one.
class QtStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    explicit QtStatusItem(const QtScreens& screens);
    ~QtStatusItem() override;

    void setAutosaveName(const std::string& name) override;
    void onClick(std::function<void(StatusItemClick)> handler) override;
    void setImage(const DrawnImage& image) override;
    [[nodiscard]] bool setSymbol(std::string_view name, const std::string& accessibilityDescription) override;
    void showMenu(const Menu& menu) override;
    [[nodiscard]] std::optional<Screen> screen() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void enroll();
    void draw();
    void clicked(StatusItemClick click, int x, int y);

    const QtScreens& screens_;
    /// A connection of its own, so that the item goes with it.
    QDBusConnection bus_;
    StatusNotifierObject object_;
    QDBusServiceWatcher watchers_;
    std::function<void(StatusItemClick)> handler_;
    std::optional<DrawnImage> image_;
    QMenu menu_;
    /// Where the last click was.
    QPoint position_;
};

/// The session's status items.
class QtStatusBar final : public StatusBar {
public:
    explicit QtStatusBar(const QtScreens& screens) : screens_(screens) {}

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;

private:
    const QtScreens& screens_;
};

}  // namespace ovin
