#pragma once

#include <QMenu>

namespace ovin {

/// Gives a menu, and all below it, more room around its entries and a selection with round corners: where the desktop has no
/// style of its own, the toolkit's plain one looks cramped. A style that the user has chosen stays as it is.
void giveMenuLook(QMenu& menu);

}  // namespace ovin
