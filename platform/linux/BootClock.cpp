#include "platform/linux/BootClock.h"

#include <ctime>

namespace ovin {
namespace {

std::chrono::seconds read(clockid_t clock) {
    timespec time{};
    // Fails for clocks that do not exist only.
    (void)clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec);
}

}  // namespace

std::chrono::seconds BootClock::date() const { return read(CLOCK_REALTIME); }
std::chrono::seconds BootClock::timeSinceBoot() const { return read(CLOCK_BOOTTIME); }

}  // namespace ovin
