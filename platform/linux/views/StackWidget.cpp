#include "platform/linux/views/StackWidget.h"

#include <QPainter>
#include <algorithm>

#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/views/QtViews.h"

namespace ovin {
namespace {

Stack withoutViews(Stack stack) {
    stack.views.clear();
    return stack;
}

}  // namespace

StackWidget::StackWidget(const Stack& stack, const std::vector<QWidget*>& views)
    : layout_(new StackLayout(stack.orientation, stack.alignment)), described_(withoutViews(stack)) {
    const Insets& edges = stack.insets;
    layout_->setContentsMargins(qRound(edges.left), qRound(edges.top), qRound(edges.right), qRound(edges.bottom));
    layout_->setSpacing(qRound(stack.spacing));
    for (QWidget* view : views) layout_->addWidget(view);
    setLayout(layout_);
    const bool isFlexible = std::any_of(views.begin(), views.end(), [](QWidget* view) { return takesSpareWidth(*view); });
    if (stack.width) {
        setFixedWidth(qRound(*stack.width));
    } else if (isFlexible) {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    }
}

Insets StackWidget::insets() const {
    const QMargins margins = layout_->contentsMargins();
    const Insets& asked = described_.insets;
    return {readBackLength(asked.top, margins.top()), readBackLength(asked.left, margins.left()),
            readBackLength(asked.bottom, margins.bottom()), readBackLength(asked.right, margins.right())};
}

decltype(View::content) StackWidget::content() const {
    Stack stack = described_;
    stack.orientation = layout_->orientation();
    stack.alignment = layout_->alignment();
    stack.spacing = readBackLength(described_.spacing, layout_->spacing());
    stack.insets = insets();
    if (stack.width) stack.width = readBackLength(*described_.width, width());
    for (int i = 0; i < layout_->count(); ++i) stack.views.push_back(readBack(*layout_->itemAt(i)->widget()));
    return stack;
}

void StackWidget::paintEvent(QPaintEvent*) {
    if (!described_.box) return;
    const Box& box = *described_.box;
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
