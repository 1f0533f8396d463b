#pragma once

#include <QAbstractButton>
#include <string>

namespace ovin {

/// The base of all buttons of views. On a page Tab reaches them and shows a focus ring, Space and Return press them; all
/// other keys go to the widgets around them, so that the page scrolls.
class PressButton : public QAbstractButton {
public:
    /// Tells buttons apart; passed to the click handler.
    [[nodiscard]] int tag() const { return tag_; }
    /// Whether it has the keyboard and shows that; not when a click gave it the keyboard.
    [[nodiscard]] bool showsFocus() const { return hasFocus() && showsFocus_; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    explicit PressButton(int tag);

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    const int tag_;
    bool showsFocus_ = false;
};

/// Sets a tool tip that shows `text` literally, because a name must not be taken for mark-up.
void setPlainToolTip(QWidget& widget, const std::string& text);

}  // namespace ovin
