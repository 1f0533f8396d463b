#pragma once

#include <QImage>

namespace ovin {

/// The picture of a status item as its program sends it: rows of pixels, each alpha, red, green and blue; null when it is
/// larger than 1024 pixels to a side, or when `size`, the number of bytes, does not fit.
[[nodiscard]] QImage pictureOf(int width, int height, const void* bytes, qsizetype size);

}  // namespace ovin
