#pragma once

#include <memory>

#include "platform/StatusItem.h"

namespace ovin {

/// The system's status bar.
[[nodiscard]] std::unique_ptr<StatusBar> makeMacStatusBar();

}  // namespace ovin
