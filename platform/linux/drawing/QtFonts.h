#pragma once

#include <QFont>

#include "platform/Views.h"

namespace ovin {

/// The font that the desktop has chosen for programs, at a size. A point of a view is a pixel of Qt, which has several
/// pixels of the screen where Qt applies a scale factor.
[[nodiscard]] QFont qtFont(const Font& font);

}  // namespace ovin
