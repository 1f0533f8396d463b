#include "platform/linux/views/MenuBackgroundWidget.h"

#include <QBoxLayout>
#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <cmath>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {
namespace {

/// The squares at the corners, in which the outline is not straight.
QRegion cornersOf(const QRect& whole, double radius) {
    const QSize size = QSize(qCeil(radius), qCeil(radius)).boundedTo(whole.size());
    QRegion corners;
    for (const int x : {0, whole.width() - size.width()}) {
        for (const int y : {0, whole.height() - size.height()}) corners += QRect(QPoint(x, y), size);
    }
    return corners;
}

QRect around(const QRect& rect) { return rect.adjusted(-rect.width(), -rect.height(), rect.width(), rect.height()); }

}  // namespace

QRegion roundedRegion(const QRect& rect, double cornerRadius, Coverage coverage) {
    QRegion region = rect.adjusted(0, qCeil(cornerRadius), 0, -qCeil(cornerRadius));
    for (int row = 0; row < cornerRadius; ++row) {
        // The row's distance from the corner's centre, measured from the row's inner side or its middle.
        const double distance = std::max(0.0, cornerRadius - row - (coverage == Coverage::touch ? 1 : 0.5));
        const double outside = cornerRadius - std::sqrt(cornerRadius * cornerRadius - distance * distance);
        const int inset = coverage == Coverage::touch ? qFloor(outside) : qCeil(outside - 0.5);
        const QRect line(rect.left() + inset, rect.top() + row, rect.width() - 2 * inset, 1);
        region += line;
        region += line.translated(0, rect.height() - 1 - 2 * row);
    }
    return region;
}

MenuBackgroundWidget::MenuBackgroundWidget(QWidget* content, double cornerRadius) : cornerRadius_(cornerRadius) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
}

/// Draws only the corners as shapes, and small ones. For a large shape the toolkit divides the lines among threads and waits
/// for them, which takes longer than drawing, and far longer while a discovery keeps the processors busy.
void MenuBackgroundWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // In pixels: where a point has one and a half of them, a line of a point would take two at one side and one at another.
    const double pixels = painter.deviceTransform().m11();
    painter.scale(1 / pixels, 1 / pixels);
    const QRect whole(QPoint(), size() * pixels);
    const int thickness = std::max(1, qFloor(pixels));
    const double radius = cornerRadius_ * pixels;

    const QColor fill = palette().color(QPalette::Window);
    // Opaque, because half of the line lies outside the fill: there it would show what is below the window.
    const QColor line = over(qtColor({SystemColor::quaternaryLabel}, palette()), fill);
    const QRegion corners = cornersOf(whole, radius);
    const QRegion edge = QRegion(whole) - whole.adjusted(thickness, thickness, -thickness, -thickness);
    for (const QRect& straight : QRegion(whole) - corners) painter.fillRect(straight, fill);
    for (const QRect& straight : edge - corners) painter.fillRect(straight, line);

    // An opaque window shows this colour in the pixels that the outline only touches.
    const bool isOpaque = !window()->testAttribute(Qt::WA_TranslucentBackground);
    const double half = thickness / 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(QPen(line, thickness));
    for (const QRect& corner : corners) {
        painter.setClipRect(corner);
        if (isOpaque) painter.fillRect(corner, line);
        const QRectF shape(around(corner) & whole);
        painter.drawRoundedRect(shape.adjusted(half, half, -half, -half), radius - half, radius - half);
    }
}

}  // namespace ovin
