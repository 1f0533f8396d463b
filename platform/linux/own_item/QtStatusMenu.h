#pragma once

#include <QPoint>
#include <QPointer>
#include <QToolButton>

#include "platform/Menu.h"

namespace ovin {

/// The menu of this program's status item: one at a time, usable with the mouse, with the keyboard (also by the shortcuts of
/// its entries while it is open) and by assistive programs. Main thread only.
class QtStatusMenu {
public:
    QtStatusMenu() = default;
    QtStatusMenu(const QtStatusMenu&) = delete;
    QtStatusMenu& operator=(const QtStatusMenu&) = delete;
    ~QtStatusMenu();

    /// Opens a menu in place of the one that is open, with its top left corner at a point, or so that it stays on the screen
    /// that has the point. Whatever an entry does runs with the menu closed.
    void show(const Menu& menu, QPoint where);

private:
    /// Never seen. Assistive programs find a menu only below a window that is no menu itself.
    QPointer<QToolButton> owner_;
};

}  // namespace ovin
