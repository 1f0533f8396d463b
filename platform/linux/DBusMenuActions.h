#pragma once

#include <QAction>

#include "platform/linux/DBusMenuLayout.h"

namespace ovin {

/// Makes an action look and behave like a menu entry. Used for new actions and for those that show an entry already.
void showMenuEntry(QAction& action, const DBusMenuNode& entry);

}  // namespace ovin
