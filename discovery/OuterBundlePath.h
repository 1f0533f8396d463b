#pragma once

#include <optional>
#include <string>

#include "platform/Workspace.h"

namespace ovin {

/// The path of the outermost application bundle that contains the application's own bundle, for example "/Apps/Outer.app"
/// for "/Apps/Outer.app/Contents/Library/LoginItems/Helper.app"; nothing when the application is not nested in another.
[[nodiscard]] std::optional<std::string> outerBundlePath(const RunningApplication& application);

}  // namespace ovin
