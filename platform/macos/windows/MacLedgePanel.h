#pragma once

#include <memory>

#include "platform/Windows.h"

namespace ovin {

/// The ledge as a panel without a title bar, which can therefore never have the keyboard.
[[nodiscard]] std::unique_ptr<LedgePanel> makeMacLedgePanel();

}  // namespace ovin
