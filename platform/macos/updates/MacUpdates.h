#pragma once

#include <memory>

#include "platform/UpdateFramework.h"

namespace ovin {

/// The Sparkle framework with its standard windows. Feed, schedule and key are in the bundle's description; the delegate may
/// replace the feed. The controller keeps both of the framework's delegates alive, because the framework holds them weakly.
///
/// Null in a build that does not update itself. Needs a bundle for which `canUpdate` is true: with any other, the framework
/// shows an alert of its own some seconds after the launch.
[[nodiscard]] std::unique_ptr<UpdateFramework> makeMacUpdates();

}  // namespace ovin
