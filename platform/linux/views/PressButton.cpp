#include "platform/linux/views/PressButton.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QScreen>
#include <QToolTip>

#include "platform/linux/drawing/ShownText.h"

namespace ovin {
namespace {

constexpr qsizetype surelyNarrow = 30;

bool isReturn(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

PressButton::PressButton(int tag) : tag_(tag) { setFocusPolicy(Qt::StrongFocus); }

bool PressButton::event(QEvent* event) {
    // Return presses the button that the user has moved to with the keyboard, otherwise the window's default button.
    if (event->type() == QEvent::ShortcutOverride && showsFocus() && isReturn(dynamic_cast<QKeyEvent&>(*event).key())) {
        event->accept();
        return true;
    }
    return QAbstractButton::event(event);
}

void PressButton::keyPressEvent(QKeyEvent* event) {
    if (isReturn(event->key())) {
        if (!event->isAutoRepeat()) click();
    } else if (event->key() == Qt::Key_Space) {
        QAbstractButton::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

void PressButton::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    // When its window becomes active again or a menu closes, the button shows the focus as before.
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        showsFocus_ = reason != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void PressButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void PressButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void setPlainToolTip(QWidget& widget, const std::string& text) {
    QString plain = shownText(QString::fromStdString(text));
    // Not every text wraps. Short ones are not measured, because that takes longer than all else.
    if (plain.size() > surelyNarrow) {
        const int widest = widget.screen()->size().width() / 2;
        plain = QFontMetrics(QToolTip::font()).elidedText(plain, Qt::ElideMiddle, widest);
    }
    widget.setToolTip(plain.isEmpty() ? QString() : "<span>" + plain.toHtmlEscaped() + "</span>");
}

}  // namespace ovin
