#include "platform/linux/views/SpacerWidgets.h"

#include <QPainter>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {

SeparatorWidget::SeparatorWidget(const Separator& separator) : width_(separator.width) {
    setFixedSize(qRound(separator.width), 1);
}

decltype(View::content) SeparatorWidget::content() const { return Separator{readBackLength(width_, width())}; }

void SeparatorWidget::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), qtColor({SystemColor::separator}, palette()));
}

SpacerWidget::SpacerWidget(const Spacer& spacer) : height_(spacer.height) { setFixedSize(1, qRound(spacer.height)); }

decltype(View::content) SpacerWidget::content() const { return Spacer{readBackLength(height_, height())}; }

FlexibleSpaceWidget::FlexibleSpaceWidget() { setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed); }

}  // namespace ovin
