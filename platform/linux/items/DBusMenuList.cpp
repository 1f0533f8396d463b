#include "platform/linux/items/DBusMenuList.h"

#include <QActionEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <algorithm>

namespace ovin {

void DBusMenuList::change(const std::function<void()>& changes) {
    isChanging_ = true;
    hasChanged_ = false;
    const bool wasTooHigh = isVisible() && isTooHigh();
    changes();
    isChanging_ = false;
    if (hasChanged_ && isVisible()) layOut(wasTooHigh);
}

/// The toolkit measures all entries anew at each change of one while the menu is visible, so it is not while many change.
void DBusMenuList::actionEvent(QActionEvent* event) {
    hasChanged_ = true;
    const bool hides = isChanging_ && isVisible();
    if (hides) setAttribute(Qt::WA_WState_Visible, false);
    QMenu::actionEvent(event);
    if (hides) setAttribute(Qt::WA_WState_Visible);
}

bool DBusMenuList::isTooHigh() const { return sizeHint().height() > screen()->availableGeometry().height(); }

void DBusMenuList::layOut(bool wasTooHigh) {
    const QRect room = screen()->availableGeometry();
    const QSize size(std::min(sizeHint().width(), room.width()), isTooHigh() ? height() : sizeHint().height());
    const int x = std::clamp(pos().x(), room.left(), room.left() + room.width() - size.width());
    const int y = std::clamp(pos().y(), room.top(), std::max(room.top(), room.top() + room.height() - size.height()));
    if (isTooHigh() != wasTooHigh) {
        // The toolkit lets a menu be scrolled only if it was too high when it opened.
        const QSignalBlocker blocker(this);
        hide();
        popup({x, y});
    } else {
        setGeometry(x, y, size.width(), size.height());
    }
    update();
}

}  // namespace ovin
