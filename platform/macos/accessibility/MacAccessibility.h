#pragma once

#include <memory>

#include "platform/Accessibility.h"

namespace ovin {

/// The system's Accessibility interface (`AXUIElement`).
///
/// Requests to elements of Ovin's own process, whose status item is among the slots of the menu bar, are answered by its
/// main thread: it must never wait for a task that sends any.
[[nodiscard]] std::unique_ptr<Accessibility> makeMacAccessibility();

}  // namespace ovin
