#include "desktop/ItemIcon.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/linux/drawing/IconReader.h"
#include "platform/linux/drawing/SymbolicIcon.h"

namespace ovin {
namespace {

QPixmap scaled(const QImage& image, const ItemIconStyle& style) {
    const double ratio = static_cast<double>(image.width()) / image.height();
    const double width = std::clamp(style.height * ratio, 1.0, static_cast<double>(style.widest));
    const QSize size = (QSizeF(width, style.height) * style.pixelRatio).toSize().expandedTo({1, 1});
    QPixmap result = QPixmap::fromImage(image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    result.setDevicePixelRatio(style.pixelRatio);
    return result;
}

QPixmap emptyPicture(const ItemIconStyle& style) {
    QPixmap picture((QSizeF(style.height, style.height) * style.pixelRatio).toSize());
    picture.setDevicePixelRatio(style.pixelRatio);
    picture.fill(Qt::transparent);
    return picture;
}

QPixmap letter(const QString& title, const ItemIconStyle& style) {
    QPixmap picture = emptyPicture(style);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(style.foreground, 1.25));
    const QRectF frame(1, 1, style.height - 2, style.height - 2);
    painter.drawRoundedRect(frame, 3.5, 3.5);

    QFont font;
    font.setFamilies(QGuiApplication::font().families());
    font.setPixelSize(9);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.drawText(frame, Qt::AlignCenter, title.left(1).toUpper());
    return picture;
}

}  // namespace

QPixmap itemIcon(const StatusItemState& state, const QString& title, const ItemIconStyle& style) {
    const auto& shown = state.shownIcon();
    const int side = static_cast<int>(std::lround(style.height * style.pixelRatio));
    const ReadIcon icon = readIcon({shown.name, state.iconThemePath}, side);
    if (QPixmap named = QPixmap::fromImage(icon.picture); !named.isNull()) {
        named.setDevicePixelRatio(style.pixelRatio);
        if (icon.isSymbolic) tint(named, style.foreground);
        return named;
    }
    if (!shown.image.isNull()) return scaled(shown.image, style);
    return letter(title, style);
}

}  // namespace ovin
