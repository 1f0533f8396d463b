#pragma once

#include <memory>

#include "platform/Alerts.h"

namespace ovin {

/// AppKit's modal alerts, one after the other. `run` returns at once: the alert appears when the run loop is next in its
/// default mode, so neither under an open menu nor on the main dispatch queue, which would be blocked until the alert is
/// acknowledged.
[[nodiscard]] std::unique_ptr<Alerts> makeMacAlerts();

}  // namespace ovin
