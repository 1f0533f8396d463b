#include "platform/linux/items/DBusMenuList.h"

#include <QActionEvent>
#include <QScreen>
#include <algorithm>

namespace ovin {

void DBusMenuList::change(const std::function<void()>& changes) {
    isChanging_ = true;
    hasChanged_ = false;
    changes();
    isChanging_ = false;
    if (hasChanged_ && isVisible()) layOut();
}

/// The toolkit measures all entries anew at each change of one while the menu is visible, so it is not while many change.
void DBusMenuList::actionEvent(QActionEvent* event) {
    hasChanged_ = true;
    const bool hides = isChanging_ && isVisible();
    if (hides) setAttribute(Qt::WA_WState_Visible, false);
    QMenu::actionEvent(event);
    if (hides) setAttribute(Qt::WA_WState_Visible);
}

void DBusMenuList::layOut() {
    const QRect room = screen()->availableGeometry();
    const QSize size = sizeHint().boundedTo(room.size());
    const int x = std::clamp(pos().x(), room.left(), room.left() + room.width() - size.width());
    const int y = std::clamp(pos().y(), room.top(), room.top() + room.height() - size.height());
    setGeometry(x, y, size.width(), size.height());
    update();
}

}  // namespace ovin
