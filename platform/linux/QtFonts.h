#pragma once

#include <QFont>

#include "platform/Views.h"

namespace ovin {

/// The system font of Ovin's windows at a size: Inter where it is installed. A point of a view is a pixel of Qt, which a
/// scale factor turns into more on dense screens.
[[nodiscard]] QFont qtFont(const Font& font);

}  // namespace ovin
