#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace ovin {

/// Whether an icon is symbolic: a shape without colours, which the toolkit would draw black on any background.
[[nodiscard]] bool isSymbolicIcon(const QString& name);

/// Paints the shape in a picture in one colour.
void tint(QPixmap& picture, const QColor& color);

/// An icon of the theme for use beside text of this colour; null when the theme has none of this name.
[[nodiscard]] QIcon themeIcon(const QString& name, int side, double pixelRatio, const QColor& textColor);

}  // namespace ovin
