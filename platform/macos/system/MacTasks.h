#pragma once

#include <memory>

#include "platform/Tasks.h"

namespace ovin {

/// Tasks on threads of their own, like `ThreadTasks`, each within an autorelease pool and with the quality of service of its
/// priority. Not the system's global queues: they stop at some dozens of threads, so that work behind that many hung
/// applications would wait for them.
///
/// The destructor waits for the tasks that still run.
[[nodiscard]] std::unique_ptr<Tasks> makeMacTasks();

}  // namespace ovin
