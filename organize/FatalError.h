#pragma once

#include <string_view>

#include "platform/SystemLog.h"

namespace ovin {

/// Ends the program after one line in the log: for a state in which going on could only do harm.
[[noreturn]] void fatalError(SystemLog& log, std::string_view line);

}  // namespace ovin
