#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QImage>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/StatusItem.h"
#include "platform/linux/displays/QtScreens.h"
#include "platform/linux/displays/RawButtons.h"
#include "platform/linux/displays/X11Pointer.h"
#include "platform/linux/own_item/MenuObject.h"
#include "platform/linux/own_item/QtStatusMenu.h"
#include "platform/linux/own_item/StatusNotifierObject.h"

namespace ovin {

/// This program's status item. It registers with the session's watcher, and again with every new one. An assistive program's
/// press arrives through the bar as a left click. The item is taken to be where the pointer was at the last click, because
/// bars tell places in coordinates of their own, or wrongly. Clicks that come faster than they are handled are all
/// delivered, except a right click that another click follows at once.
class QtStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// `hasBar` tells, where a host is registered with the session's watcher, whether it is a bar with a tray.
    /// `hostChanged` is told whenever a host may have been registered there, or none be left.
    QtStatusItem(const QtScreens& screens, std::function<bool()> hasBar, std::function<void(bool hasHost)> hostChanged);
    ~QtStatusItem() override;

    /// Sets the Id, by which bars tell the item from others. If a bar has read another Id before, the item leaves the bar
    /// and comes back with the new one, because bars do not read it twice.
    void setAutosaveName(const std::string& name) override;
    void onClick(std::function<void(StatusItemClick)> handler) override;
    void setImage(const DrawnImage& image) override;
    [[nodiscard]] bool setSymbol(std::string_view name, const std::string& accessibilityDescription) override;
    void showMenu(const Menu& menu) override;
    void setMenu(std::function<Menu()> menu) override { exportedMenu_.setMenu(std::move(menu)); }
    /// A bar draws the item where a host is registered with the watcher.
    [[nodiscard]] bool isDrawn() const override { return hasHost_ && hasBar_(); }
    [[nodiscard]] std::optional<Screen> screen() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    using Picture = std::function<QImage(double scale)>;
    struct Registration;

    void enter();
    void enroll();
    Q_SLOT void askForHost();
    void askForHostsName();
    void setHasHost(bool hasHost);
    void show(Picture picture, const QString& iconName, const std::string& description);
    void draw();
    void clicked(StatusItemClick click);
    void deliverClicks();

    const QtScreens& screens_;
    const std::function<bool()> hasBar_;
    const std::function<void(bool)> hostChanged_;
    bool hasHost_ = false;
    StatusNotifierObject object_;
    MenuObject exportedMenu_;
    std::unique_ptr<Registration> registration_;
    std::function<void(StatusItemClick)> handler_;
    Picture picture_;
    QString iconName_;
    QtStatusMenu menu_;
    /// As it was at the last click.
    std::optional<X11Pointer> pointer_;
    /// The clicks that have not been delivered, in their order. The button of the last one may still be held down.
    std::vector<StatusItemClick> clicks_;
    QTimer release_;
    /// Reports that button's release; null while no button is down, and where the X server has no such events.
    std::unique_ptr<RawButtons> releases_;
};

/// The session's status items.
class QtStatusBar final : public StatusBar {
public:
    /// The functions are those for `QtStatusItem`.
    QtStatusBar(const QtScreens& screens, std::function<bool()> hasBar, std::function<void(bool hasHost)> hostChanged)
        : screens_(screens), hasBar_(std::move(hasBar)), hostChanged_(std::move(hostChanged)) {}

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;

private:
    const QtScreens& screens_;
    const std::function<bool()> hasBar_;
    const std::function<void(bool)> hostChanged_;
};

}  // namespace ovin
