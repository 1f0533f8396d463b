#pragma once

#include <memory>
#include <string_view>

#include "platform/UserDefaults.h"

namespace ovin {

/// The user defaults of this application. A value of another type that another program has put there, such as a date, reads
/// as an empty string: it exists, and counts as 0 and false.
///
/// `set` waits until the system's preferences have taken over a change, which then survives the end of this process. It
/// reaches the disk a moment later. A loss of power in between also ends the session, and with it the display mode that a
/// record is about.
///
/// `suite` names other defaults, for tests; empty for the application's own.
[[nodiscard]] std::unique_ptr<UserDefaults> makeMacUserDefaults(std::string_view suite = {});

}  // namespace ovin
