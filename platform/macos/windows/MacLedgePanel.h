#pragma once

#include <memory>

#include "platform/Windows.h"

namespace ovin {

/// The ledge as a panel that has no title bar and therefore never gets the keyboard.
[[nodiscard]] std::unique_ptr<LedgePanel> makeMacLedgePanel();

}  // namespace ovin
