#pragma once

#include <QMenu>
#include <QString>
#include <QToolButton>

namespace ovin {

/// A button that is never seen and has a menu: assistive programs find a menu that pops up by itself only below a window
/// that is no menu. Must go before the menu does.
class MenuAnchor final : public QToolButton {
public:
    /// `name` is what assistive programs call the button.
    MenuAnchor(QMenu& menu, const QString& name) {
        setAccessibleName(name);
        setPopupMode(QToolButton::MenuButtonPopup);
        setMenu(&menu);
        winId();
    }
};

}  // namespace ovin
