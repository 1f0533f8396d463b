#pragma once

#include <QAbstractButton>
#include <string>

namespace ovin {

/// What the buttons of a page have in common. They can be reached with Tab, which shows that they are reached, and pressed
/// with Space and Return; all other keys are left to what they stand in, so that a page scrolls.
class PressButton : public QAbstractButton {
public:
    /// Tells buttons apart; a click is delivered with it.
    [[nodiscard]] int tag() const { return tag_; }
    /// Whether it has the keyboard and shows it: not when a click brought it there.
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

/// A tool tip as it stands, whatever it holds: a name is not mark-up.
void setPlainToolTip(QWidget& widget, const std::string& text);

}  // namespace ovin
