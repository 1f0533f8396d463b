#include "platform/threads/SteadyClock.h"

namespace ovin {

std::chrono::nanoseconds SteadyClock::now() const { return std::chrono::steady_clock::now().time_since_epoch(); }

}  // namespace ovin
