#pragma once

#include <QIcon>

#include "platform/Image.h"

namespace ovin {

/// The icon that an image of this world stands for; a generic one when it cannot be loaded.
[[nodiscard]] QIcon qtIcon(const Image& image);

}  // namespace ovin
