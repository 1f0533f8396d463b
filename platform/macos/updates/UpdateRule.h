#pragma once

#include "platform/Resources.h"

namespace ovin {

/// Whether `bundle`, from which the program runs, has what the update framework needs: its identifier, its build, and the
/// key that proves an update genuine. False for a program that runs without its bundle.
[[nodiscard]] bool canUpdate(const Resources& bundle);

}  // namespace ovin
