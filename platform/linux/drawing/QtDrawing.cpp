#include "platform/linux/drawing/QtDrawing.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {
namespace {

/// In points.
constexpr double outlineWidth = 0.8;
/// Of each of the shifted copies that the outline is made of.
constexpr double outlineOpacity = 0.45;
constexpr int outlineSteps = 8;

QPainterPath pathOf(const DrawnShape& shape) {
    QPainterPath path;
    const Rect& rect = shape.rect;
    path.addRoundedRect(QRectF(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height), shape.cornerRadius,
                        shape.cornerRadius);
    QTransform transform;
    transform.translate(shape.translation.x, shape.translation.y);
    transform.rotate(shape.rotationDegrees);
    return transform.map(path);
}

void draw(QPainter& painter, const DrawnShape& shape, const QPalette& palette) {
    const QPainterPath path = pathOf(shape);
    painter.fillPath(path, qtColor(shape.fill, palette));
    if (!shape.outline) return;
    painter.save();
    painter.setClipPath(path);
    painter.strokePath(path, QPen(qtColor(shape.outline->color, palette), shape.outline->width));
    painter.restore();
}

}  // namespace

QImage rendered(const DrawnImage& image, double scale, const QPalette& palette) {
    const QSizeF size(image.size.width, image.size.height);
    QImage result((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    // The y coordinates of shapes grow upwards from the bottom.
    painter.scale(scale, -scale);
    painter.translate(0, -size.height());
    for (const DrawnShape& shape : image.shapes(isDark(palette) ? Appearance::dark : Appearance::light)) {
        draw(painter, shape, palette);
    }
    return result;
}

QImage outlined(const QImage& picture, double scale, const QPalette& palette) {
    QImage shadow = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    {
        QPainter painter(&shadow);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(shadow.rect(), isDark(palette) ? Qt::black : Qt::white);
    }
    QImage result(picture.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    const double distance = outlineWidth * scale;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(outlineOpacity);
    for (int step = 0; step < outlineSteps; ++step) {
        const double angle = 2 * std::numbers::pi * step / outlineSteps;
        painter.drawImage(QPointF(distance * std::cos(angle), distance * std::sin(angle)), shadow);
    }
    painter.setOpacity(1);
    painter.drawImage(0, 0, picture);
    return result;
}

}  // namespace ovin
