#pragma once

#include <QImage>
#include <QPalette>

#include "platform/Drawing.h"

namespace ovin {

/// An image with `scale` pixels to a point, as it looks with a palette.
[[nodiscard]] QImage rendered(const DrawnImage& image, double scale, const QPalette& palette);

/// A picture in the text colour of `palette` with a thin outline in the opposite one, so that it can be made out also where
/// the colours around it are not those of the palette. `scale` is its pixels to a point.
[[nodiscard]] QImage outlined(const QImage& picture, double scale, const QPalette& palette);

}  // namespace ovin
