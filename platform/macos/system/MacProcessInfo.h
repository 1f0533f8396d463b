#pragma once

#include <memory>

#include "platform/ProcessInfo.h"

namespace ovin {

/// This process. Its bundle identifier is that of the bundle that it runs from; without one, as for a test program, it is
/// that of Ovin.
[[nodiscard]] std::unique_ptr<ProcessInfo> makeMacProcessInfo();

}  // namespace ovin
