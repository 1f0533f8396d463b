#pragma once

#include <memory>

#include "platform/LaunchAtLogin.h"

namespace ovin {

/// This application among the system's login items. Every call blocks on another process, so call only when the user asks.
[[nodiscard]] std::unique_ptr<LaunchAtLogin> makeMacLaunchAtLogin();

}  // namespace ovin
