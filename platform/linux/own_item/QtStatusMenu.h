#pragma once

#include <QPoint>
#include <QPointer>

#include "platform/Menu.h"
#include "platform/linux/drawing/MenuAnchor.h"

namespace ovin {

/// The menu of this program's status item: one at a time, usable with the mouse, with the keyboard (also by the shortcuts of
/// its entries while it is open) and by assistive programs. Main thread only.
class QtStatusMenu {
public:
    QtStatusMenu() = default;
    QtStatusMenu(const QtStatusMenu&) = delete;
    QtStatusMenu& operator=(const QtStatusMenu&) = delete;
    ~QtStatusMenu();

    /// Opens a menu in place of the open one, with its top left corner at `where`, or moved so that it stays on the screen
    /// of that point. The menu is closed before an entry's action runs.
    void show(const Menu& menu, QPoint where);

private:
    /// The parent of the open menu.
    QPointer<MenuAnchor> anchor_;
};

}  // namespace ovin
