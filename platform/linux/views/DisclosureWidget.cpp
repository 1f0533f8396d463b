#include "platform/linux/views/DisclosureWidget.h"

#include <QPainter>
#include <QPainterPath>

#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/QtFonts.h"

namespace ovin {
namespace {

/// The triangle's measures as fractions of the font's size: half its base, half its height and the rounding of its corners.
constexpr double halfBase = 0.32;
constexpr double halfReach = 0.22;
constexpr double rounding = 0.12;
constexpr double ringRadius = 4;

}  // namespace

DisclosureWidget::DisclosureWidget(const DisclosureTriangle& triangle)
    : PressButton(triangle.tag), fontSize_(triangle.font.size) {
    setCheckable(true);
    setChecked(triangle.isOn);
    setAccessibleName(QString::fromStdString(triangle.accessibilityLabel));
    setFont(qtFont(triangle.font));
    setFixedSize(sizeHint());
}

QSize DisclosureWidget::sizeHint() const {
    const int side = fontMetrics().height();
    return {side, side};
}

void DisclosureWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (showsFocus()) drawFocus(painter, rect(), ringRadius, palette());
    painter.translate(QRectF(rect()).center());
    if (isChecked()) painter.rotate(90);
    const double size = fontSize_;
    QPainterPath path({-halfReach * size, -halfBase * size});
    path.lineTo(halfReach * size, 0);
    path.lineTo(-halfReach * size, halfBase * size);
    path.closeSubpath();
    const bool isLit = isDown() || underMouse();
    // The opacity is the painter's, because with a translucent colour the overlap of edge and fill would show.
    QColor color = qtColor({SystemColor::label}, palette());
    painter.setOpacity(isLit ? 0.85 : 0.6);
    const QPen edge(color, rounding * size, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.fillPath(path.united(QPainterPathStroker(edge).createStroke(path)), color);
}

}  // namespace ovin
