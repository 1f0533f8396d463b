#pragma once

#include <memory>

#include "platform/SystemLog.h"

namespace ovin {

/// The unified log, and the standard error stream where somebody reads it. Entries there may have several lines, so nothing
/// is escaped.
[[nodiscard]] std::unique_ptr<SystemLog> makeMacSystemLog();

}  // namespace ovin
