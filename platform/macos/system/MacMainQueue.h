#pragma once

#include <memory>

#include "platform/MainQueue.h"

namespace ovin {

/// The main run loop, in all its common modes, so that work also runs while a menu or an alert is open.
///
/// Not the main dispatch queue, because that is not re-entrant: while one of its blocks runs an alert or a menu, no other
/// block runs, and the results of discovery would wait until the user has closed the alert. Nor blocks of the run loop,
/// which takes all waiting blocks at once and would hold back those behind the one that opened the alert. Work waits in a
/// queue of this object instead, and a run-loop source takes one piece at a time.
///
/// Made and destroyed on the main thread; must outlive every task that uses it.
[[nodiscard]] std::unique_ptr<MainQueue> makeMacMainQueue();

}  // namespace ovin
