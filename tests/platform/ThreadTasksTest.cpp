#include "platform/threads/ThreadTasks.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <latch>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Priority = Tasks::Priority;

void ignore(std::size_t) {}

TEST(ThreadTasks, ChildrenThatAllWaitForOneAnotherFinish) {
    ThreadTasks tasks;
    std::latch everybodyIsHere(200);
    std::size_t reports = 0;
    tasks.forEach(
        200, [&](std::size_t) { everybodyIsHere.arrive_and_wait(); }, [&](std::size_t) { ++reports; });
    EXPECT_EQ(reports, 200U);
}

TEST(ThreadTasks, TasksThatAllWaitForOneAnotherFinish) {
    std::latch everybodyIsHere(100);
    {
        ThreadTasks tasks;
        for (int i = 0; i < 100; ++i) tasks.start(Priority::utility, [&] { everybodyIsHere.arrive_and_wait(); });
    }
    EXPECT_TRUE(everybodyIsHere.try_wait());
}

TEST(ThreadTasks, ChildrenAreReportedInTheOrderInWhichTheyReturn) {
    ThreadTasks tasks;
    std::vector<std::unique_ptr<std::latch>> mayReturn;
    for (int i = 0; i < 8; ++i) mayReturn.push_back(std::make_unique<std::latch>(1));
    mayReturn.back()->count_down();
    std::vector<std::size_t> order;
    // Each report releases the child before it, so that the last child is done first.
    tasks.forEach(
        8, [&](std::size_t i) { mayReturn[i]->wait(); },
        [&](std::size_t i) {
            order.push_back(i);
            if (i > 0) mayReturn[i - 1]->count_down();
        });
    EXPECT_EQ(order, (std::vector<std::size_t>{7, 6, 5, 4, 3, 2, 1, 0}));
}

TEST(ThreadTasks, ForEachWithoutChildrenReturns) {
    ThreadTasks tasks;
    int calls = 0;
    tasks.forEach(
        0, [&](std::size_t) { ++calls; }, [&](std::size_t) { ++calls; });
    EXPECT_EQ(calls, 0);
}

TEST(ThreadTasks, EveryChildHasAThreadOfItsOwn) {
    ThreadTasks tasks;
    std::mutex mutex;
    std::set<std::thread::id> threads{std::this_thread::get_id()};
    std::latch everybodyIsHere(20);
    tasks.forEach(
        20,
        [&](std::size_t) {
            const std::lock_guard lock(mutex);
            threads.insert(std::this_thread::get_id());
            everybodyIsHere.count_down();
        },
        ignore);
    EXPECT_TRUE(everybodyIsHere.try_wait());
    EXPECT_GT(threads.size(), 1U);
    EXPECT_EQ(threads.count(std::this_thread::get_id()), 1U);
}

TEST(ThreadTasks, ManyQuickChildrenShareThreads) {
    ThreadTasks tasks;
    std::mutex mutex;
    std::set<std::thread::id> threads;
    tasks.forEach(
        2000,
        [&](std::size_t) {
            const std::lock_guard lock(mutex);
            threads.insert(std::this_thread::get_id());
        },
        [](std::size_t) {});
    EXPECT_LT(threads.size(), 1000U);
}

#ifdef __linux__

TEST(ThreadTasks, ThereAreNoMoreThreadsThanChildren) {
    const auto threadCount = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
    };
    ThreadTasks tasks;
    const auto before = threadCount();
    for (int round = 0; round < 100; ++round) {
        while (threadCount() > before) std::this_thread::sleep_for(1ms);  // Joined threads are still listed for a moment.
        tasks.forEach(
            1, [&](std::size_t) { EXPECT_LE(threadCount(), before + 1); }, ignore);
    }
}

#endif

TEST(ThreadTasks, BothPrioritiesRun) {
    std::atomic<int> runs = 0;
    {
        ThreadTasks tasks;
        tasks.start(Priority::userInitiated, [&] { ++runs; });
        tasks.start(Priority::utility, [&] { ++runs; });
    }
    EXPECT_EQ(runs, 2);
}

TEST(ThreadTasks, TheThreadOfATaskIsPreparedBeforeItsWorkAndThoseOfChildrenAreNot) {
    static thread_local int preparations = 0;
    int ofTask = 0;
    int ofChildren = 0;
    {
        ThreadTasks tasks([] { ++preparations; });
        tasks.start(Priority::userInitiated, [&] {
            ofTask = preparations;
            tasks.forEach(
                1, [&](std::size_t) { ofChildren += preparations; }, ignore);
        });
    }
    EXPECT_EQ(ofTask, 1);
    EXPECT_EQ(ofChildren, 0);
    EXPECT_EQ(preparations, 0);
}

TEST(ThreadTasks, TheDestructorWaitsForTasksAndForWhatTheyHold) {
    struct Slow {
        explicit Slow(std::atomic<bool>& flag) : isGone(flag) {}
        ~Slow() {
            std::this_thread::sleep_for(20ms);
            isGone = true;
        }
        std::atomic<bool>& isGone;
    };
    std::atomic<bool> hasEnded = false;
    std::atomic<bool> isGone = false;
    {
        ThreadTasks tasks;
        auto held = std::make_shared<Slow>(isGone);
        tasks.start(Priority::utility, [&hasEnded, kept = std::move(held)] {
            std::this_thread::sleep_for(50ms);
            hasEnded = true;
        });
    }
    EXPECT_TRUE(hasEnded);
    EXPECT_TRUE(isGone);
}

TEST(ThreadTasks, TheDestructorWaitsForTasksThatTasksStarted) {
    std::atomic<int> depth = 0;
    {
        ThreadTasks tasks;
        tasks.start(Priority::utility, [&] {
            ++depth;
            tasks.start(Priority::utility, [&] {
                std::this_thread::sleep_for(20ms);
                ++depth;
            });
        });
    }
    EXPECT_EQ(depth, 2);
}

#ifdef __GLIBC__

/// Lets the system refuse every thread for a while: no machine has room for the stacks that they would get.
class NoThreads {
public:
    NoThreads() {
        pthread_getattr_default_np(&before_);
        pthread_attr_t huge;
        pthread_getattr_default_np(&huge);
        pthread_attr_setstacksize(&huge, std::size_t{1} << 55U);
        pthread_setattr_default_np(&huge);
        pthread_attr_destroy(&huge);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
    ~NoThreads() {
        pthread_setattr_default_np(&before_);
        pthread_attr_destroy(&before_);
    }

private:
    pthread_attr_t before_{};
};

TEST(ThreadTasks, WithoutThreadsTheSystemRefusesThem) {
    const NoThreads noThreads;
    EXPECT_THROW(std::thread([] {}).join(), std::system_error);
}

TEST(ThreadTasks, ATaskWithoutAThreadRunsWithinTheCall) {
    const auto held = std::make_shared<int>(1);
    {
        ThreadTasks tasks;
        const NoThreads noThreads;
        std::thread::id thread;
        tasks.start(Priority::userInitiated, [&thread, held] { thread = std::this_thread::get_id(); });
        EXPECT_EQ(thread, std::this_thread::get_id());
        EXPECT_EQ(held.use_count(), 1);
    }
    SUCCEED() << "The destructor does not wait for a thread that never was.";
}

TEST(ThreadTasks, ACallingThreadThatRunsATaskIsNotPreparedForIt) {
    int preparations = 0;
    ThreadTasks tasks([&] { ++preparations; });
    const NoThreads noThreads;
    tasks.start(Priority::userInitiated, [] {});
    EXPECT_EQ(preparations, 0);
}

TEST(ThreadTasks, ChildrenWithoutThreadsRunOnTheCallingThread) {
    ThreadTasks tasks;
    const NoThreads noThreads;
    std::vector<std::thread::id> threads(10);
    std::vector<std::size_t> order;
    tasks.forEach(
        10, [&](std::size_t i) { threads[i] = std::this_thread::get_id(); }, [&](std::size_t i) { order.push_back(i); });
    EXPECT_EQ(threads, std::vector<std::thread::id>(10, std::this_thread::get_id()));
    EXPECT_EQ(order, (std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(ThreadTasks, AfterARefusalThreadsAreAskedForAgain) {
    ThreadTasks tasks;
    {
        const NoThreads noThreads;
        tasks.forEach(2, ignore, ignore);
    }
    std::latch bothAreHere(2);
    tasks.forEach(
        2, [&](std::size_t) { bothAreHere.arrive_and_wait(); }, ignore);
    EXPECT_TRUE(bothAreHere.try_wait());
}

#endif

}  // namespace
}  // namespace ovin
