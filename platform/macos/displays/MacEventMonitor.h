#pragma once

#include <memory>

#include "platform/EventMonitor.h"

namespace ovin {

/// A global monitor of mouse events: it sees those that go to other applications, and needs nobody's permission.
[[nodiscard]] std::unique_ptr<EventMonitor> makeMacEventMonitor();

}  // namespace ovin
