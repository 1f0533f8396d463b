#include "platform/linux/system/GentleThread.h"

#include <sched.h>
#include <sys/resource.h>

#include <algorithm>

namespace ovin {
namespace {

/// A tenth of the share of other threads. Less would let a busy machine make programs look hung that are not.
constexpr int niceness = 10;

}  // namespace

void giveWay() {
    // For the kernel, 0 is the calling thread in both calls. That they are refused would be no reason to do without the
    // thread.
    (void)setpriority(PRIO_PROCESS, 0, std::max(niceness, getpriority(PRIO_PROCESS, 0)));
    // Such a thread interrupts no other when it wakes up, as a hundred of them do that wait for answers.
    const sched_param none{};
    (void)sched_setscheduler(0, SCHED_BATCH, &none);
}

}  // namespace ovin
