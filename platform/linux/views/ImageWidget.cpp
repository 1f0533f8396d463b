#include "platform/linux/views/ImageWidget.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "platform/linux/drawing/QtIcons.h"

namespace ovin {

ImageWidget::ImageWidget(const ImageView& image)
    : icon_(qtIcon(image.image)), size_(image.size.width, image.size.height), cornerRadius_(image.cornerRadius) {
    setAccessibleName(QString::fromStdString(image.accessibilityLabel));
    setFixedSize(size_.toSize());
}

void ImageWidget::paintEvent(QPaintEvent*) {
    QPixmap picture = icon_.pixmap(size(), devicePixelRatioF());
    if (picture.isNull()) return;
    // Lengths are in pixels from here on, because an icon that lacks the exact size has an odd pixel ratio.
    picture.setDevicePixelRatio(1);
    QSizeF drawn = QSizeF(picture.size()).scaled(size_, Qt::KeepAspectRatio);
    // Keeps rounding from leaving a gap beside the picture.
    if (std::abs(drawn.width() - width()) < 1 && std::abs(drawn.height() - height()) < 1) drawn = size();
    const QRectF place(QPointF((width() - drawn.width()) / 2, (height() - drawn.height()) / 2), drawn);
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // A brush instead of a clip, because a clip's edge would have steps.
    QBrush brush(picture);
    brush.setTransform(QTransform::fromTranslate(place.x(), place.y())
                           .scale(drawn.width() / picture.width(), drawn.height() / picture.height()));
    QPainterPath path;
    path.addRoundedRect(place, cornerRadius_, cornerRadius_);
    painter.fillPath(path, brush);
}

}  // namespace ovin
