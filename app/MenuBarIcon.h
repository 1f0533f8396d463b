#pragma once

#include "platform/Color.h"
#include "platform/Drawing.h"

/// The image of Ovin's status item, drawn in code: a flat bar in the text colour of the menu bar, and a small tilted square
/// in orange that rests above it. It draws itself anew for light and dark.
namespace ovin::MenuBarIcon {

/// The product's orange.
inline constexpr SRGB orange{0.93, 0.62, 0.2};

/// 22 points wide and 18 high. Any thread.
[[nodiscard]] const DrawnImage& image();

}  // namespace ovin::MenuBarIcon
