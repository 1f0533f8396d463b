#pragma once

#include <memory>

#include "platform/EventMonitor.h"

namespace ovin {

/// A global monitor of mouse events: it sees events that go to other applications, and needs no permission.
[[nodiscard]] std::unique_ptr<EventMonitor> makeMacEventMonitor();

}  // namespace ovin
