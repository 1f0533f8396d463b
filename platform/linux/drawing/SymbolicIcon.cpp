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

}  // namespace ovin
