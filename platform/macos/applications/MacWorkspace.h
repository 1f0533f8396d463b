#pragma once

#include <memory>

#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace ovin {

/// The applications that the system lists for the user's session. Those that have no process id yet or any more are left
/// out. Icons are loaded when they are drawn.
///
/// The system may report a start or end twice, in its list and by a notification. Handlers are called once for all changes
/// until the main queue runs them.
///
/// `mainQueue` and `log` must outlive the workspace, which is destroyed on the main thread.
[[nodiscard]] std::unique_ptr<Workspace> makeMacWorkspace(MainQueue& mainQueue, SystemLog& log);

}  // namespace ovin
