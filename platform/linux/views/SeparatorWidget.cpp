#include "platform/linux/views/SeparatorWidget.h"

#include <QPainter>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {

SeparatorWidget::SeparatorWidget(const Separator& separator) { setFixedSize(qRound(separator.width), 1); }

void SeparatorWidget::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), qtColor({SystemColor::separator}, palette()));
}

}  // namespace ovin
