#pragma once

#include <memory>

#include "platform/SystemLog.h"

namespace ovin {

/// The unified log, and the standard error stream where it leads to a reader. Entries of the log may have several lines, so
/// nothing is escaped.
[[nodiscard]] std::unique_ptr<SystemLog> makeMacSystemLog();

}  // namespace ovin
