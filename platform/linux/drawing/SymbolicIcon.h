#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

namespace ovin {

/// Whether an icon is symbolic: a shape without colours, which the toolkit would draw black on any background.
[[nodiscard]] bool isSymbolicIcon(const QString& name);

/// Paints the shape in a picture in one colour.
void tint(QPixmap& picture, const QColor& color);

}  // namespace ovin
