#pragma once

#include <functional>

namespace ovin {

/// Asks the user, in a window of its own, whether to let programs like this one read what others show, and calls `answered`
/// with the answer. If such a window is already open, it comes to the front instead. Returns at once. Main thread only.
void askForTrust(std::function<void(bool isAgreed)> answered);

}  // namespace ovin
