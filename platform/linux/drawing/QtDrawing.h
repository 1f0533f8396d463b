#pragma once

#include <QImage>
#include <QPalette>

#include "platform/Drawing.h"

namespace ovin {

/// An image with `scale` pixels to a point, as it looks with a palette.
[[nodiscard]] QImage rendered(const DrawnImage& image, double scale, const QPalette& palette);

}  // namespace ovin
