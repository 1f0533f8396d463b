#pragma once

#include <QAction>
#include <QMenu>

#include "platform/linux/items/DBusMenuLayout.h"

namespace ovin {

/// Makes an action of `menu` look and behave like a menu entry. For new actions and for those that already show an entry;
/// changes only what is different.
void showMenuEntry(const QMenu& menu, QAction& action, const DBusMenuEntry& entry);

/// The entry that an action shows.
[[nodiscard]] DBusMenuEntry shownMenuEntry(const QAction& action);

}  // namespace ovin
