#pragma once

#include <QIcon>

#include "platform/Image.h"

namespace ovin {

/// The icon of an image that the program brings or that the desktop has; null when it cannot be loaded.
[[nodiscard]] QIcon qtIcon(const Image& image);

/// The same for windows, loaded at its first use, in sizes up to 128 pixels. The toolkit sends all sizes of an icon to the X
/// server with each window that it makes, menus and the ledge included; a large one costs more than all the rest.
[[nodiscard]] QIcon qtWindowIcon(const Image& image);

}  // namespace ovin
