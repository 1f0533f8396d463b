#include "platform/linux/drawing/SymbolicIcon.h"

#include <QFileInfo>
#include <QPainter>
#include <QPixmap>

namespace ovin {

bool isSymbolicIcon(const QString& name) {
    return QFileInfo(name).completeBaseName().endsWith(QLatin1String("-symbolic")) ||
           name.endsWith(QLatin1String("-symbolic"));
}

void tint(QPixmap& picture, const QColor& color) {
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
}

QIcon themeIcon(const QString& name, int side, double pixelRatio, const QColor& textColor) {
    const QIcon icon = QIcon::fromTheme(name);
    const QIcon shape = icon.isNull() ? QIcon::fromTheme(name + QLatin1String("-symbolic")) : icon;
    if (shape.isNull() || !isSymbolicIcon(shape.name())) return shape;
    QPixmap picture = shape.pixmap(QSize(side, side), pixelRatio);
    if (picture.isNull()) return {};
    tint(picture, textColor);
    return QIcon(picture);
}

}  // namespace ovin
