#include "platform/linux/own_item/QtStatusMenu.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>

#include "platform/linux/drawing/MenuLook.h"

namespace ovin {
namespace {

/// Handles shortcuts itself: the toolkit does so only in the window that has the keyboard, which may be another program's.
class ShortcutMenu final : public QMenu {
public:
    using QMenu::QMenu;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        for (QAction* action : actions()) {
            if (action->shortcut().isEmpty() || action->shortcut() != QKeySequence(event->keyCombination())) continue;
            close();
            return action->trigger();
        }
        QMenu::keyPressEvent(event);
    }
};

/// Where menus run from right to left, the dots at the end of a title in Latin letters would stand at its beginning. These
/// marks (first strong isolate, pop directional isolate) let the title run as its letters do.
QString running(const QString& title) {
    return QGuiApplication::isRightToLeft() ? QChar(0x2068) + title + QChar(0x2069) : title;
}

void addEntry(QMenu& menu, const MenuEntry& entry) {
    // Doubled, because the toolkit takes an ampersand for the mark of a shortcut.
    QAction* const action = menu.addAction(running(QString::fromStdString(entry.title).replace("&", "&&")));
    action->setCheckable(entry.isOn);
    action->setChecked(entry.isOn);
    if (!entry.keyEquivalent.empty()) {
        action->setShortcut(QKeySequence("Ctrl+" + QString::fromStdString(entry.keyEquivalent)));
        action->setShortcutVisibleInContextMenu(true);
    }
    QObject::connect(action, &QAction::triggered, &menu, [&menu, run = entry.action] {
        // An assistive program presses an entry without closing the menu.
        menu.close();
        if (run) run();
    });
}

}  // namespace

QtStatusMenu::~QtStatusMenu() { delete anchor_; }

void QtStatusMenu::show(const Menu& entries, QPoint where) {
    // Deleted later, because an entry of this menu may be running.
    if (anchor_) {
        anchor_->menu()->close();
        anchor_->deleteLater();
    }
    anchor_ = new MenuAnchor("Ovin");
    auto* const menu = new ShortcutMenu(anchor_);
    giveMenuLook(*menu);
    for (const auto& entry : entries) entry ? addEntry(*menu, *entry) : void(menu->addSeparator());
    anchor_->setMenu(menu);
    // Queued, because a menu reports the click after it has begun to hide.
    QObject::connect(menu, &QMenu::aboutToHide, anchor_, &QObject::deleteLater, Qt::QueuedConnection);
    menu->popup(where);
}

}  // namespace ovin
