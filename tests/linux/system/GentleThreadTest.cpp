#include "platform/linux/system/GentleThread.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/resource.h>

#include <algorithm>
#include <thread>

namespace ovin {
namespace {

struct Manners {
    int policy = sched_getscheduler(0);
    int niceness = getpriority(PRIO_PROCESS, 0);

    friend bool operator==(const Manners&, const Manners&) = default;
};

TEST(GentleThread, AThreadThatGivesWayAndThoseThatItStartsInterruptNobodyAndTheOthersStayAsTheyAre) {
    const Manners before;
    Manners gentle;
    Manners startedByIt;
    std::thread([&] {
        giveWay();
        gentle = Manners();
        std::thread([&] { startedByIt = Manners(); }).join();
    }).join();
    EXPECT_EQ(gentle.policy, SCHED_BATCH);
    EXPECT_EQ(gentle.niceness, std::max(10, before.niceness));
    EXPECT_EQ(startedByIt, gentle);
    EXPECT_EQ(Manners(), before);
}

}  // namespace
}  // namespace ovin
