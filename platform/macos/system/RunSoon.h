// For Objective-C++ files only.
#pragma once

#include <functional>

namespace ovin {

/// Runs `work` once what AppKit is doing right now is over: a button that is pressed, a window that is closing or a menu
/// that is open must not be destroyed before. In every common mode of the main run loop, and never on the main dispatch
/// queue, which would stand still for as long as `work` runs a loop of its own. Main thread only.
void runSoon(std::function<void()> work);

}  // namespace ovin
