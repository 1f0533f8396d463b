// Discovery over the threads of the operating system, with applications that take real time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "platform/threads/SteadyClock.h"
#include "platform/threads/ThreadTasks.h"
#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::SizeIs;

class RealThreads : public testing::Test {
protected:
    MemoryAccessibility accessibility{[](std::chrono::nanoseconds duration) { std::this_thread::sleep_for(duration); }};
    MemoryWorld world;
    SteadyClock clock;
    ThreadTasks tasks;

    Platform platform() { return world.platform(accessibility, clock, tasks); }

    std::vector<MemoryElement> items;

    void launchAgentThatDraws(std::size_t count) {
        const ProcessID pid = 1000;
        world.workspace.launch({pid, "com.apple.MenuBarAgent", "MenuBarAgent", {}, {}});
        const MemoryElement agent = accessibility.launch(pid);
        const MemoryElement window = accessibility.makeElement(pid);
        agent.set("AXWindows", {AttributeValue::Array{{window.element()}}});
        std::vector<MemoryElement> slots;
        for (std::size_t i = 0; i < count; ++i) {
            slots.push_back(accessibility.makeElement(pid));
            slots.back().setFrame({{static_cast<double>(i) * 30, 0}, {30, 24}});
            slots.back().setChildren({items[i]});
        }
        window.setChildren(slots);
    }

    std::vector<AppInfo> launch(ProcessID count) {
        std::vector<AppInfo> apps;
        for (ProcessID pid = 1; pid <= count; ++pid) {
            const MemoryElement root = accessibility.launch(pid);
            const MemoryElement bar = accessibility.makeElement(pid);
            const MemoryElement item = accessibility.makeElement(pid);
            item.set("AXTitle", {std::to_string(pid)});
            bar.setChildren({item});
            items.push_back(item);
            root.set("AXExtrasMenuBar", {bar.element()});
            apps.push_back({pid, {}, "App", {}});
        }
        return apps;
    }
};

TEST_F(RealThreads, TwoHundredHungApplicationsHoldUpNobodyForLongerThanOneTimeout) {
    const auto apps = launch(220);
    for (ProcessID pid = 21; pid <= 220; ++pid) accessibility.setHung(pid, true);
    const auto start = clock.now();
    EXPECT_THAT(ItemProvider::discoverItems(platform(), apps), SizeIs(20));
    const auto elapsed = clock.now() - start;
    EXPECT_GE(elapsed, 250ms);
    // One after the other they would take 50 s. The margin is for machines that do other things as well.
    EXPECT_LT(elapsed, 2s);
}

TEST_F(RealThreads, ApplicationsThatComeGoAndHangMeanwhileAreSurvived) {
    const auto apps = launch(30);
    std::atomic<bool> isDone = false;
    std::thread mischief([&] {
        for (unsigned round = 0; !isDone; ++round) {
            const auto pid = static_cast<ProcessID>(1 + round % 10);
            accessibility.quit(pid);
            accessibility.launch(pid).set("AXExtrasMenuBar", {std::string("none")});
            accessibility.setLatency(pid, std::chrono::microseconds(round % 100));
            accessibility.setHung(pid, round % 7 == 0);
        }
    });
    for (int round = 0; round < 8; ++round) {
        const auto found = ItemProvider::discoverItems(platform(), apps);
        const auto isSteady = [](const DiscoveredItem& item) { return item.ownerPID > 10; };
        EXPECT_EQ(std::count_if(found.begin(), found.end(), isSteady), 20);
    }
    isDone = true;
    mischief.join();
}

TEST_F(RealThreads, SeveralDiscoveriesAtOnceShareNothing) {
    const auto apps = launch(20);
    launchAgentThatDraws(5);
    tasks.forEach(
        8, [&](std::size_t) { EXPECT_THAT(ItemProvider::discoverItems(platform(), apps), SizeIs(15)); }, [](std::size_t) {});
}

}  // namespace
}  // namespace ovin
