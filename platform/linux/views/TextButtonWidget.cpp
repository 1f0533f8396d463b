#include "platform/linux/views/TextButtonWidget.h"

#include "platform/linux/drawing/QtColors.h"

namespace ovin {
namespace {

constexpr double ringRadius = 3;
constexpr double pressedOpacity = 0.6;

}  // namespace

TextButtonWidget::TextButtonWidget(const TextButton& button) : PressButton(button.tag), title_(button.title) {
    // Before the text, because assistive programs read the role, which depends on the cursor, together with it.
    if (button.isLink) setCursor(Qt::PointingHandCursor);
    setText(plainText(button.title));
    setShortcut({});
    setAccessibleName(text());
    setPlainToolTip(*this, button.toolTip);
}

TextLines TextButtonWidget::lines() const { return {title_, palette()}; }

QSize TextButtonWidget::sizeHint() const { return lines().size(); }

void TextButtonWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (showsFocus()) drawFocus(painter, rect(), ringRadius, palette());
    if (isDown()) painter.setOpacity(pressedOpacity);
    lines().draw(painter, {0, 0});
}

}  // namespace ovin
