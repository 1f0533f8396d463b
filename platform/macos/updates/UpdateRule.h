#pragma once

#include "platform/Resources.h"

namespace ovin {

/// Whether the bundle that the program runs from says what the update framework needs to begin: who it is, which build it
/// is, and the key by which an update is known to be genuine. A program that runs without its bundle says none of it.
[[nodiscard]] bool canUpdate(const Resources& bundle);

}  // namespace ovin
