#pragma once

#include <memory>

#include "platform/Resources.h"

namespace ovin {

/// What lies in the bundle that the program runs from: pictures and the icon file in its folder of resources, texts in its
/// description (`Info.plist`). A picture's size is the one that its file states, in points.
[[nodiscard]] std::unique_ptr<Resources> makeMacResources();

}  // namespace ovin
