#pragma once

#include <memory>

#include "platform/Tasks.h"

namespace ovin {

/// Threads of their own, as `ThreadTasks` has them, each job within an autorelease pool and with the quality of service that
/// its priority stands for. The system's global queues would do neither: they stop at some dozens of threads, and whatever
/// waits behind that many hung applications would wait for the slowest of them.
///
/// Its end waits for the tasks that still run.
[[nodiscard]] std::unique_ptr<Tasks> makeMacTasks();

}  // namespace ovin
