#pragma once

#include <QMenu>

namespace ovin {

/// Gives a menu and its submenus more room around the entries and a selection with round corners, because the toolkit's
/// plain style, used where the desktop has none, looks cramped. A style that the user has chosen is kept.
void giveMenuLook(QMenu& menu);

}  // namespace ovin
