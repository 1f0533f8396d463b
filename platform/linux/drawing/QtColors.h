#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>

#include "platform/Color.h"

namespace ovin {

/// A colour as this desktop shows it: system colours come from the palette, and so follow its light or dark appearance.
[[nodiscard]] QColor qtColor(const Color& color, const QPalette& palette);

/// A colour with this opacity, from 0 to 1.
[[nodiscard]] QColor faded(QColor color, double opacity);

/// The opaque colour that a translucent one makes on an opaque one.
[[nodiscard]] QColor over(const QColor& above, const QColor& below);

/// Black or white, whichever is easier to read on `background`.
[[nodiscard]] QColor readableOn(const QColor& background);

/// `background`, darkened if need be, so that even small text in the colour `readableOn` it has enough contrast.
[[nodiscard]] QColor behindText(const QColor& background);

/// Whether a palette is a dark one.
[[nodiscard]] bool isDark(const QPalette& palette);

/// Marks something that has no edge of its own as having the keyboard.
void drawFocus(QPainter& painter, const QRect& place, double cornerRadius, const QPalette& palette);

}  // namespace ovin
