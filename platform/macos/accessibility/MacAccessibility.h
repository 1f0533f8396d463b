#pragma once

#include <memory>

#include "platform/Accessibility.h"

namespace ovin {

/// The system's Accessibility interface (`AXUIElement`).
///
/// Ovin's own status item is among the slots of the menu bar, and the main thread answers the requests to it: that thread
/// must never wait for a task that sends requests.
[[nodiscard]] std::unique_ptr<Accessibility> makeMacAccessibility();

}  // namespace ovin
