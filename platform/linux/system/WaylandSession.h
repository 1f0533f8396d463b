#pragma once

#include <QtGlobal>

namespace ovin {

/// Whether the display belongs to a Wayland compositor. This program then runs on the X server that the compositor has for
/// such programs, and that knows nothing of the pointer, the keys and the bars outside the windows of X programs.
[[nodiscard]] inline bool isWaylandSession() { return qEnvironmentVariableIsSet("WAYLAND_DISPLAY"); }

}  // namespace ovin
