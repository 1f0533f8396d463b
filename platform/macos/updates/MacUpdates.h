#pragma once

#include <memory>

#include "platform/UpdateFramework.h"

namespace ovin {

/// The Sparkle framework with its standard windows. Feed, schedule and key are in the bundle's description; the delegate may
/// replace the feed. Both of the framework's delegates live as long as the controller, since it holds them weakly.
///
/// Null in a build that does not update itself. Needs a bundle that `canUpdate`: with any other the framework shows an alert
/// of its own some seconds after the launch.
[[nodiscard]] std::unique_ptr<UpdateFramework> makeMacUpdates();

}  // namespace ovin
