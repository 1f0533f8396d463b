#pragma once

#include <memory>

#include "platform/Screens.h"

namespace ovin {

/// The screens as AppKit lists them, asked afresh each time: none may be kept across a change.
[[nodiscard]] std::unique_ptr<Screens> makeMacScreens();

}  // namespace ovin
