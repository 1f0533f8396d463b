#include "platform/linux/views/PushButtonWidget.h"

#include <QPainter>
#include <QShortcut>
#include <algorithm>

#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/QtFonts.h"

namespace ovin {
namespace {

constexpr Font controlFont{13, Font::Weight::regular};
constexpr int sidePadding = 18;
constexpr int leastWidth = 76;
constexpr int leastHeight = 30;
constexpr int textMargin = 7;

constexpr double restingOpacity = 0.08;
constexpr double hoverOpacity = 0.13;
constexpr double pressedOpacity = 0.22;
constexpr double defaultOpacity = 0.16;
constexpr double disabledOpacity = 0.4;
constexpr int hoverPercent = 107;
constexpr int pressedPercent = 118;
/// The ring around the button that has the keyboard, and its distance from the button.
constexpr double ringWidth = 2;
constexpr double ringDistance = 3.5;

void drawCapsule(QPainter& painter, const QRectF& rect) {
    const double radius = rect.height() / 2;
    painter.drawRoundedRect(rect, radius, radius);
}

QList<Qt::Key> keys(KeyEquivalent equivalent) {
    switch (equivalent) {
        case KeyEquivalent::none:
            return {};
        case KeyEquivalent::returnKey:
            return {Qt::Key_Return, Qt::Key_Enter};
        case KeyEquivalent::escape:
            return {Qt::Key_Escape};
    }
    return {};
}

}  // namespace

PushButtonWidget::PushButtonWidget(const PushButton& button)
    : PressButton(button.tag),
      isDefault_(button.keyEquivalent == KeyEquivalent::returnKey),
      isProminent_(button.isProminent) {
    setText(QString::fromStdString(button.title));
    // Removes the shortcut that the toolkit makes of an ampersand in the text: only the description sets keys.
    setShortcut({});
    setAccessibleName(text());
    setFont(qtFont(button.font.value_or(controlFont)));
    if (button.width) setFixedWidth(qRound(*button.width));
    for (const Qt::Key key : keys(button.keyEquivalent)) {
        auto* const shortcut = new QShortcut(QKeySequence(key), this);
        // A key that is held down presses once.
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, &QAbstractButton::click);
    }
}

QSize PushButtonWidget::sizeHint() const {
    const int width = fontMetrics().horizontalAdvance(text()) + 2 * sidePadding;
    return {std::max(width, leastWidth), std::max(fontMetrics().height() + 2 * textMargin, leastHeight)};
}

QColor PushButtonWidget::fill() const {
    const QColor accent = palette().color(QPalette::Highlight);
    if (isProminent_) {
        const QColor body = behindText(accent);
        if (isDown()) return body.darker(pressedPercent);
        return underMouse() ? body.darker(hoverPercent) : body;
    }
    if (isDown()) return faded(isDefault_ ? accent : palette().color(QPalette::WindowText), pressedOpacity * 1.5);
    if (isDefault_) return faded(accent, underMouse() ? pressedOpacity : defaultOpacity);
    return faded(palette().color(QPalette::WindowText), underMouse() ? hoverOpacity : restingOpacity);
}

QColor PushButtonWidget::textColor() const {
    if (isProminent_) return readableOn(palette().color(QPalette::Highlight));
    return palette().color(QPalette::WindowText);
}

void PushButtonWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) painter.setOpacity(disabledOpacity);
    const QColor accent = palette().color(QPalette::Highlight);
    QRectF body = rect();
    if (showsFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(accent, ringWidth));
        drawCapsule(painter, body.adjusted(ringWidth / 2, ringWidth / 2, -ringWidth / 2, -ringWidth / 2));
        body.adjust(ringDistance, ringDistance, -ringDistance, -ringDistance);
    }
    painter.setBrush(fill());
    painter.setPen(Qt::NoPen);
    if (!isProminent_) {
        const QColor edge = isDefault_ ? accent : qtColor({SystemColor::quaternaryLabel}, palette());
        const double width = isDefault_ ? 1.5 : 1;
        painter.setPen(QPen(edge, width));
        body.adjust(width / 2, width / 2, -width / 2, -width / 2);
    }
    drawCapsule(painter, body);
    painter.setPen(textColor());
    painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace ovin
