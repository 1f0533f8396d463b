#pragma once

#include <functional>

namespace ovin {

/// Asks the user, in a window of its own, whether to let programs like this one read what others show, and calls `enable` if
/// so. A question that still waits for its answer comes to the front instead of another one. Returns at once. Main thread
/// only.
void askForTrust(std::function<void()> enable);

}  // namespace ovin
