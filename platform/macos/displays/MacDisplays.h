#pragma once

#include <memory>

#include "platform/DisplayServices.h"

namespace ovin {

/// The displays as CoreGraphics lists them, read at each call.
[[nodiscard]] std::unique_ptr<DisplayServices> makeMacDisplays();

}  // namespace ovin
