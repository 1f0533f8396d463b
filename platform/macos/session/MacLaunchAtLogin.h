#pragma once

#include <memory>

#include "platform/LaunchAtLogin.h"

namespace ovin {

/// This application among the system's login items. Every call asks another process: for actions of the user only.
[[nodiscard]] std::unique_ptr<LaunchAtLogin> makeMacLaunchAtLogin();

}  // namespace ovin
