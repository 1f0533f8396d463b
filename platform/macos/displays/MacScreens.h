#pragma once

#include <memory>

#include "platform/Screens.h"

namespace ovin {

/// The screens as AppKit lists them, read at each call, because none may be kept across a change.
[[nodiscard]] std::unique_ptr<Screens> makeMacScreens();

}  // namespace ovin
