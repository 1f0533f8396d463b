#pragma once

#include <memory>

#include "platform/MainQueue.h"

namespace ovin {

/// The main run loop, in all its common modes: work runs also while a menu or an alert is open.
///
/// It is not the main dispatch queue, because that one is not re-entrant: while one of its blocks runs an alert or a menu,
/// no other block of it runs, and the results of discovery would wait until the user has closed the alert. Nor are they
/// blocks of the run loop, which takes all that wait at once and would hold back those behind the one that opened the alert.
/// Work waits in a queue of this object instead, and a run-loop source takes one piece at a time.
///
/// Made and destroyed on the main thread; must outlive every task that uses it.
[[nodiscard]] std::unique_ptr<MainQueue> makeMacMainQueue();

}  // namespace ovin
