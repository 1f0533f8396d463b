// Organizing over the threads of the operating system, with applications that take real time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "organize/ArrangeSession.h"
#include "platform/memory/MemoryWorld.h"
#include "platform/threads/SteadyClock.h"
#include "platform/threads/ThreadTasks.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Outcome = BeginResult::Outcome;

/// A main queue in real time, for the thread that runs it. Delays are a twentieth of what is asked for: here nobody waits
/// for a menu bar to be laid out.
class QuickMainQueue final : public MainQueue {
public:
    void async(Work work) override { add(0ns, std::move(work)); }

    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::nanoseconds delay, Work work) override {
        const auto kept = std::make_shared<Work>(std::move(work));
        add(delay / 20, [weak = std::weak_ptr(kept)] {
            if (const auto due = weak.lock()) (*due)();
        });
        return std::make_unique<KeptWork>(kept);
    }

    /// Runs what is due until the condition holds; false when it does not within ten seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) {
        const auto limit = Clock::now() + 10s;
        while (!condition()) {
            if (Clock::now() >= limit) return false;
            runNextWithin(5ms);
        }
        return true;
    }

    void runFor(std::chrono::milliseconds duration) {
        const auto limit = Clock::now() + duration;
        (void)runUntil([limit] { return Clock::now() >= limit; });
    }

private:
    using Clock = std::chrono::steady_clock;

    class KeptWork final : public Timer {
    public:
        explicit KeptWork(std::shared_ptr<Work> work) : work_(std::move(work)) {}

    private:
        std::shared_ptr<Work> work_;
    };

    void add(std::chrono::nanoseconds delay, Work work) {
        const std::lock_guard lock(mutex_);
        agenda_.emplace(Clock::now() + delay, std::move(work));
        hasMore_.notify_one();
    }

    void runNextWithin(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        const auto latest = Clock::now() + limit;
        hasMore_.wait_until(lock, agenda_.empty() ? latest : std::min(latest, agenda_.begin()->first));
        if (agenda_.empty() || agenda_.begin()->first > Clock::now()) return;
        const auto next = agenda_.extract(agenda_.begin());
        lock.unlock();
        next.mapped()();
    }

    std::mutex mutex_;
    std::condition_variable hasMore_;
    std::multimap<Clock::time_point, Work> agenda_;
};

class ArrangeSessionOnRealThreads : public testing::Test {
protected:
    static constexpr DisplayMode usual{1, 1512, 982, 3024, true};
    static constexpr DisplayMode wide{2, 2560, 1600, 2560, true};
    static constexpr ProcessID agentPID = 300;
    static constexpr ProcessID appPID = 512;

    /// To applications. Counted without putting threads in order, which would hide a missing lock from the sanitizer.
    std::atomic<int> questions = 0;
    MemoryAccessibility accessibility{[this](std::chrono::nanoseconds duration) {
        questions.fetch_add(1, std::memory_order_relaxed);
        std::this_thread::sleep_for(duration);
    }};
    MemoryWorld world;
    SteadyClock clock;
    QuickMainQueue mainQueue;
    // Its end waits for the tasks, which use all of the above.
    ThreadTasks tasks;
    DisplayWidener widener{platform()};
    std::shared_ptr<ArrangeSession> session;
    std::vector<Outcome> outcomes;
    int warnings = 0;

    void SetUp() override {
        world.displays.displays = {{1, {{0, 0}, {1512, 982}}, {usual, wide}, usual, false}};
        // The bar draws the first of two items, and so the second is searched for before and after the display is widened.
        const std::vector<MemoryElement> items = launchWithTwoItems();
        launchAgentThatDraws(items.front());
        accessibility.setLatency(appPID, 1ms);
        createSession();
    }

    void createSession() {
        session = ArrangeSession::create(platform(), widener);
        session->onItemsStillDoNotFit = [this, main = std::this_thread::get_id()] {
            EXPECT_EQ(std::this_thread::get_id(), main);
            ++warnings;
        };
    }

    /// Whether nothing is in its way.
    bool begin() {
        const std::size_t before = outcomes.size();
        session->begin([this, main = std::this_thread::get_id()](const BeginResult& result) {
            EXPECT_EQ(std::this_thread::get_id(), main);
            outcomes.push_back(result.outcome);
        });
        return outcomes.size() == before;
    }

    [[nodiscard]] auto startCount() const { return std::count(outcomes.begin(), outcomes.end(), Outcome::started); }

    void runUntilReported() {
        const auto before = startCount();
        EXPECT_TRUE(mainQueue.runUntil([&] { return startCount() > before; }));
    }

    /// Until the items are being searched for.
    void runUntilChecking() {
        const int before = questions.load(std::memory_order_relaxed);
        EXPECT_TRUE(mainQueue.runUntil([&] { return questions.load(std::memory_order_relaxed) > before; }));
    }

    [[nodiscard]] DisplayMode mode() { return world.displays.displays.front().current.value(); }

private:
    [[nodiscard]] Platform platform() {
        const Platform memory = world.platform(accessibility, clock, tasks);
        return {memory.accessibility, memory.workspace,     memory.displays,  memory.defaults, memory.process,
                memory.text,          memory.log,           memory.clock,     mainQueue,       memory.tasks,
                memory.application,   memory.screens,       memory.windows,   memory.events,   memory.statusBar,
                memory.alerts,        memory.launchAtLogin, memory.resources, memory.updates};
    }

    [[nodiscard]] std::vector<MemoryElement> launchWithTwoItems() {
        world.workspace.launch({appPID, "com.example.Net", "Net", {}, {}});
        const MemoryElement root = accessibility.launch(appPID);
        const MemoryElement bar = accessibility.makeElement(appPID);
        std::vector<MemoryElement> items{accessibility.makeElement(appPID), accessibility.makeElement(appPID)};
        bar.setChildren(items);
        root.set("AXExtrasMenuBar", {bar.element()});
        return items;
    }

    void launchAgentThatDraws(const MemoryElement& item) {
        world.workspace.launch({agentPID, "com.apple.MenuBarAgent", "MenuBarAgent", {}, {}});
        const MemoryElement agent = accessibility.launch(agentPID);
        const MemoryElement window = accessibility.makeElement(agentPID);
        const MemoryElement slot = accessibility.makeElement(agentPID);
        slot.setFrame({{1000, 0}, {30, 24}});
        slot.setChildren({item});
        window.setChildren({slot});
        // Which of several windows is the bar's, the display tells.
        const MemoryElement other = accessibility.makeElement(agentPID);
        agent.set("AXWindows", {AttributeValue::Array{{window.element()}, {other.element()}}});
    }
};

TEST_F(ArrangeSessionOnRealThreads, ASessionStartsWarnsAndEnds) {
    EXPECT_TRUE(begin());
    runUntilReported();
    EXPECT_THAT(outcomes, ElementsAre(Outcome::started));
    EXPECT_EQ(mode(), wide);
    EXPECT_TRUE(mainQueue.runUntil([this] { return warnings > 0; }));
    session->end();
    EXPECT_EQ(mode(), usual);
}

TEST_F(ArrangeSessionOnRealThreads, WheneverASessionEndsTheDisplayIsBackAndNothingComesAfterwards) {
    const std::vector<std::function<void()>> moments{
        [] {}, [this] { EXPECT_TRUE(mainQueue.runUntil([this] { return session->isActive(); })); },
        [this] { runUntilReported(); },
        [this] {
            runUntilReported();
            runUntilChecking();
        }};
    for (int round = 0; round < 24; ++round) {
        // One that was cancelled stays in the way until it has returned.
        ASSERT_TRUE(mainQueue.runUntil([this] { return begin(); }));
        moments[static_cast<std::size_t>(round) % moments.size()]();
        session->end();
        EXPECT_EQ(mode(), usual);
        const auto before = std::pair(startCount(), warnings);
        (void)begin();
        session->end();
        // While tasks of the one before are under way.
        if (round >= 12) createSession();
        mainQueue.runFor(10ms);
        EXPECT_EQ(mode(), usual);
        EXPECT_EQ(std::pair(startCount(), warnings), before);
        if (HasFailure()) return;
    }
    EXPECT_FALSE(widener.isWidened());
}

}  // namespace
}  // namespace ovin
