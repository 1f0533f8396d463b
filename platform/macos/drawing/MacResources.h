#pragma once

#include <memory>

#include "platform/Resources.h"

namespace ovin {

/// The contents of the bundle that the program runs from: pictures and the icon file in its resources folder, texts in its
/// `Info.plist`. A picture's size is the one that its file states, in points.
[[nodiscard]] std::unique_ptr<Resources> makeMacResources();

}  // namespace ovin
