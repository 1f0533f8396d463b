#pragma once

#include <QString>
#include <QToolButton>

namespace ovin {

/// An invisible button that has the menu, because assistive programs find a pop-up menu only below a window that is no menu.
/// Must be destroyed before the menu, or be its parent.
class MenuAnchor final : public QToolButton {
public:
    /// `name` is what assistive programs call the button.
    explicit MenuAnchor(const QString& name) {
        setAccessibleName(name);
        setPopupMode(QToolButton::MenuButtonPopup);
        winId();
    }
};

}  // namespace ovin
