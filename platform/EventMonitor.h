#pragma once

#include <functional>
#include <memory>

#include "platform/Handle.h"

namespace ovin {

/// Reports what the user does in other applications.
class EventMonitor {
public:
    /// Ends the monitoring when destroyed.
    using Token = Handle;

    virtual ~EventMonitor() = default;

    /// Calls `handler` for every press of the left or the right mouse button outside this application's windows, until the
    /// token is destroyed. Null where the system forbids it. Main thread only; the handler may be called on any thread.
    [[nodiscard]] virtual std::unique_ptr<Token> monitorMouseDowns(std::function<void()> handler) = 0;
};

}  // namespace ovin
