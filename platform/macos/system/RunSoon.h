// For Objective-C++ files only.
#pragma once

#include <functional>

namespace ovin {

/// Runs `work` once AppKit has finished what it is doing, because a pressed button, a closing window or an open menu must
/// not be destroyed before. Runs in every common mode of the main run loop, and never on the main dispatch queue, which
/// would be blocked for as long as `work` runs a nested loop. Main thread only.
void runSoon(std::function<void()> work);

}  // namespace ovin
