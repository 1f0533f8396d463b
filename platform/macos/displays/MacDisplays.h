#pragma once

#include <memory>

#include "platform/DisplayServices.h"

namespace ovin {

/// The displays as CoreGraphics tells of them, asked afresh each time.
[[nodiscard]] std::unique_ptr<DisplayServices> makeMacDisplays();

}  // namespace ovin
