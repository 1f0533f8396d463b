#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>

#include "platform/Color.h"

namespace ovin {

/// A colour as this desktop shows it: system colours come from the palette, and so follow its light and dark.
[[nodiscard]] QColor qtColor(const Color& color, const QPalette& palette);

/// Black or white, whichever is the easier to read on a colour.
[[nodiscard]] QColor readableOn(const QColor& background);

/// What a colour becomes where text in `readableOn` of it lies on it: a little darker if need be, so that even small text
/// has enough contrast.
[[nodiscard]] QColor behindText(const QColor& background);

/// Whether a palette is a dark one.
[[nodiscard]] bool isDark(const QPalette& palette);

/// Shows that something without an edge of its own has the keyboard.
void drawFocus(QPainter& painter, const QRect& place, double cornerRadius, const QPalette& palette);

}  // namespace ovin
