#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace ovin {

/// Symbolic icons are shapes without colours of their own; the toolkit would draw them black on any background.
[[nodiscard]] bool isSymbolicIcon(const QString& name);

/// Gives the shape in a picture one colour.
void tint(QPixmap& picture, const QColor& color);

/// An icon of the theme for text of a colour; null when the theme has none of this name.
[[nodiscard]] QIcon themeIcon(const QString& name, int side, double pixelRatio, const QColor& textColor);

}  // namespace ovin
