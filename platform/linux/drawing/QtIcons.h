#pragma once

#include <QIcon>

#include "platform/Image.h"

namespace ovin {

/// The icon of an image that the program brings or that the desktop has; null when it cannot be loaded.
[[nodiscard]] QIcon qtIcon(const Image& image);

/// The program's icon for windows with a frame, loaded at its first use, in sizes up to 128 pixels. It is not the toolkit's
/// icon for all windows: ledge and menus show none, and would wait until it is loaded and sent to the X server.
[[nodiscard]] QIcon ownWindowIcon();

}  // namespace ovin
