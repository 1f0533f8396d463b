#include "platform/linux/drawing/SymbolImage.h"

#include <QPainter>
#include <QPainterPath>

namespace ovin {
namespace {

constexpr double side = 18;
constexpr double radius = 7.5;
constexpr double strokeWidth = 1.8;

QPainterPath checkMark() {
    QPainterPath path({5.6, 9.3});
    path.lineTo(8.1, 11.8);
    path.lineTo(12.4, 6.4);
    return path;
}

}  // namespace

QImage symbolImage(std::string_view name, double scale, const QPalette& palette) {
    if (name != "checkmark.circle.fill") return {};
    QImage image((QSizeF(side, side) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::WindowText));
    painter.drawEllipse(QPointF(side / 2, side / 2), radius, radius);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.strokePath(checkMark(), QPen(Qt::black, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return image;
}

}  // namespace ovin
