#pragma once

#include <QIcon>

#include "platform/Image.h"
#include "platform/linux/drawing/IconReader.h"

namespace ovin {

/// The icon of an image that the program brings or that the desktop has; null when it cannot be loaded.
[[nodiscard]] QIcon qtIcon(const Image& image);

/// The same for windows, loaded at its first use, in sizes up to 128 pixels. The toolkit sends all sizes of an icon to the X
/// server with each window that it makes, menus and the ledge included; a large one costs more than all the rest.
[[nodiscard]] QIcon qtWindowIcon(const Image& image);

/// Asks for an image that another program may have chosen, in the size that fits a square of `side` pixels. It comes later,
/// as `IconLoader::loaded` tells. Not for painting: it may ask again for what is known.
void loadIcon(const Image& image, int side);

/// As much as is known of such an image: its picture, or a generic one when there is none; null until one has come.
[[nodiscard]] ReadIcon knownIcon(const Image& image, int side);

}  // namespace ovin
