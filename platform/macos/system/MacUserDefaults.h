#pragma once

#include <memory>
#include <string_view>

#include "platform/UserDefaults.h"

namespace ovin {

/// The user defaults of this application. What somebody else has put there and is neither a number nor a string, such as a
/// date, reads as an empty string: it is there, and counts as 0 and false.
///
/// A change is durable once the system's preferences have taken it over, which is waited for: from then on it survives the
/// end of this process. It reaches the disk a moment later. A loss of power in between ends the session as well, and with it
/// the display mode that a record speaks of.
///
/// `suite` names other defaults, for tests; empty for the application's own.
[[nodiscard]] std::unique_ptr<UserDefaults> makeMacUserDefaults(std::string_view suite = {});

}  // namespace ovin
