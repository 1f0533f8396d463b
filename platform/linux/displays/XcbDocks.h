#pragma once

#include <optional>

#include "platform/linux/displays/DockLayout.h"

namespace ovin {

/// The bars of this moment, over the toolkit's connection. Nothing without an X server. Main thread only.
[[nodiscard]] std::optional<DockLayout> readDocks();

}  // namespace ovin
