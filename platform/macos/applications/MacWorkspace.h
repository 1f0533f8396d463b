#pragma once

#include <memory>

#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace ovin {

/// The applications that the system lists for the user's session. Those without a process id, which have none yet or none
/// any more, are left out. Icons are asked for when they are drawn.
///
/// An application that starts or ends may be told of twice by the system, in its list and by a notification. Whoever
/// observes is called once for everything that has changed until the main queue comes to it.
///
/// `mainQueue` and `log` must outlive the workspace, which is destroyed on the main thread.
[[nodiscard]] std::unique_ptr<Workspace> makeMacWorkspace(MainQueue& mainQueue, SystemLog& log);

}  // namespace ovin
