#pragma once

#include <memory>

#include "platform/ProcessInfo.h"

namespace ovin {

/// This process. Its bundle identifier is that of the bundle that it runs from, or Ovin's without a bundle, as for a test
/// program.
[[nodiscard]] std::unique_ptr<ProcessInfo> makeMacProcessInfo();

}  // namespace ovin
