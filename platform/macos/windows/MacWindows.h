#pragma once

#include <memory>

#include "platform/Windows.h"

namespace ovin {

/// AppKit's windows and panels.
[[nodiscard]] std::unique_ptr<Windows> makeMacWindows();

}  // namespace ovin
