#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QImage>
#include <QPoint>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "platform/StatusItem.h"
#include "platform/linux/displays/QtScreens.h"
#include "platform/linux/displays/RawButtons.h"
#include "platform/linux/own_item/QtStatusMenu.h"
#include "platform/linux/own_item/StatusNotifierObject.h"

namespace ovin {

/// This program's status item. It registers with the session's watcher, and again with every new one. An assistive program's
/// press arrives through the bar as a left click. The item's place is unknown until the first click. Clicks that come faster
/// than they are handled are all delivered, except a right click that another click follows at once.
class QtStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    explicit QtStatusItem(const QtScreens& screens);
    ~QtStatusItem() override;

    /// Sets the Id, by which bars tell the item from others. If a bar has read another Id before, the item leaves the bar
    /// and comes back with the new one, because bars do not read it twice.
    void setAutosaveName(const std::string& name) override;
    void onClick(std::function<void(StatusItemClick)> handler) override;
    void setImage(const DrawnImage& image) override;
    [[nodiscard]] bool setSymbol(std::string_view name, const std::string& accessibilityDescription) override;
    void showMenu(const Menu& menu) override;
    [[nodiscard]] std::optional<Screen> screen() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    using Picture = std::function<QImage(double scale)>;
    struct Registration;

    void enter();
    void enroll();
    void show(Picture picture, const std::string& description);
    void draw();
    void clicked(StatusItemClick click, int x, int y);
    void deliverClicks();

    const QtScreens& screens_;
    StatusNotifierObject object_;
    std::unique_ptr<Registration> registration_;
    std::function<void(StatusItemClick)> handler_;
    Picture picture_;
    QtStatusMenu menu_;
    /// Where the last click was, in the toolkit's coordinates.
    std::optional<QPoint> position_;
    /// The clicks that have not been delivered, in their order. The button of the last one may still be held down.
    std::vector<StatusItemClick> clicks_;
    QTimer release_;
    /// Reports that button's release; null while no button is down, and where the X server has no such events.
    std::unique_ptr<RawButtons> releases_;
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
