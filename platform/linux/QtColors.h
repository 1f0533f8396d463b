#pragma once

#include <QColor>
#include <QPalette>

#include "platform/Color.h"

namespace ovin {

/// A colour as this desktop shows it: system colours come from the palette, and so follow its light and dark.
[[nodiscard]] QColor qtColor(const Color& color, const QPalette& palette);

/// Whether a palette is a dark one.
[[nodiscard]] bool isDark(const QPalette& palette);

}  // namespace ovin
