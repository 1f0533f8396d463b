#include "platform/linux/system/GentleThread.h"

#include <sched.h>
#include <sys/resource.h>

#include <algorithm>

namespace ovin {
namespace {

/// A tenth of the share of other threads. With less, programs would seem to hang on a busy machine.
constexpr int niceness = 10;

}  // namespace

void giveWay() {
    // In both calls, 0 is the calling thread. Errors are ignored, because the thread works without them, too.
    (void)setpriority(PRIO_PROCESS, 0, std::max(niceness, getpriority(PRIO_PROCESS, 0)));
    // A batch thread interrupts no other when it wakes up; a hundred of them may wait for answers.
    const sched_param none{};
    (void)sched_setscheduler(0, SCHED_BATCH, &none);
}

}  // namespace ovin
