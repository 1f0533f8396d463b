#include "platform/linux/views/StackWidget.h"

#include <QPainter>
#include <algorithm>

#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/views/StackLayout.h"

namespace ovin {

StackWidget::StackWidget(const Stack& stack, const std::vector<QWidget*>& views) : box_(stack.box) {
    auto* const layout = new StackLayout(stack.orientation, stack.alignment);
    const Insets& edges = stack.insets;
    layout->setContentsMargins(qRound(edges.left), qRound(edges.top), qRound(edges.right), qRound(edges.bottom));
    for (std::size_t i = 0; i < views.size(); ++i)
        layout->add(views[i], qRound(stack.views[i].spacingAfter.value_or(stack.spacing)));
    setLayout(layout);
    const bool isFlexible = std::any_of(views.begin(), views.end(), [](QWidget* view) { return takesSpareWidth(*view); });
    if (stack.width) {
        setFixedWidth(qRound(*stack.width));
    } else if (isFlexible) {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    }
}

void StackWidget::paintEvent(QPaintEvent*) {
    if (!box_) return;
    const Box& box = *box_;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(qtColor(box.background, palette()));
    painter.setPen(box.borderWidth > 0 ? QPen(qtColor(box.border, palette()), box.borderWidth) : QPen(Qt::NoPen));
    // The border lies inside the edges.
    const double inset = box.borderWidth / 2;
    const double radius = std::max(0.0, box.cornerRadius - inset);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace ovin
