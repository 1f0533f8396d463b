// How long a discovery takes over real threads, with stand-in applications that take real time for every answer, and how
// much of a geometry snapshot is the snapshot's own work. docs/benchmarks.md holds the results and how to repeat them.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "discovery/ItemProvider.h"
#include "discovery/ItemScan.h"
#include "discovery/MenuBarGeometry.h"
#include "platform/memory/MemoryWorld.h"
#include "platform/threads/SteadyClock.h"
#include "platform/threads/ThreadTasks.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr ProcessID agentPID = 100'000;
constexpr std::size_t itemsOfTheBusiest = 5;

/// Applications in memory that answer in real time.
class Session {
public:
    explicit Session(std::chrono::nanoseconds latency) : latency_(latency) {}

    MemoryAccessibility accessibility{[](std::chrono::nanoseconds duration) {
        if (duration > 0ns) std::this_thread::sleep_for(duration);
    }};
    MemoryWorld world;
    SteadyClock clock;
    ThreadTasks tasks;
    std::vector<AppInfo> apps;
    std::vector<MemoryElement> items;

    Platform platform() { return world.platform(accessibility, clock, tasks); }

    /// An application with this many items; without any, it has no extras menu bar either.
    void launch(std::size_t itemCount, bool hung = false) {
        const auto pid = static_cast<ProcessID>(apps.size() + 1);
        const MemoryElement root = accessibility.launch(pid);
        apps.push_back({pid, {}, "App " + std::to_string(pid), {}});
        std::vector<MemoryElement> own;
        for (std::size_t i = 0; i < itemCount; ++i) {
            own.push_back(accessibility.makeElement(pid));
            own.back().set("AXTitle", {"Item " + std::to_string(i)});
        }
        if (!own.empty()) {
            const MemoryElement bar = accessibility.makeElement(pid);
            bar.setChildren(own);
            root.set("AXExtrasMenuBar", {bar.element()});
        }
        items.insert(items.end(), own.begin(), own.end());
        accessibility.setLatency(pid, latency_);
        accessibility.setHung(pid, hung);
    }

    /// `total` applications, `withItems` of which have from one to five items.
    void launchMany(std::size_t total, std::size_t withItems) {
        for (std::size_t i = 0; i < total; ++i) launch(i < withItems ? 1 + i % itemsOfTheBusiest : 0);
    }

    /// A menu bar agent with a slot for every item, as many of them drawn as fit.
    void launchAgent(std::chrono::nanoseconds latency, std::size_t slotCount) {
        world.workspace.launch({agentPID, "com.apple.MenuBarAgent", "MenuBarAgent", {}, {}});
        const MemoryElement agent = accessibility.launch(agentPID);
        const MemoryElement window = accessibility.makeElement(agentPID);
        agent.set("AXWindows", {AttributeValue::Array{{window.element()}}});
        std::vector<MemoryElement> slots;
        for (std::size_t i = 0; i < slotCount; ++i) {
            slots.push_back(accessibility.makeElement(agentPID));
            slots.back().setFrame({{static_cast<double>(i) * 30, 0}, {30, 24}});
            slots.back().setChildren({items[i % items.size()]});
        }
        window.setChildren(slots);
        accessibility.setLatency(agentPID, latency);
    }

private:
    std::chrono::nanoseconds latency_;
};

/// The time of one scan of the application with the longest chain of reads, alone.
Milliseconds slowestChain(Session& session) {
    const Platform platform = session.platform();
    const std::vector<AppInfo> busiest{session.apps[itemsOfTheBusiest - 1]};
    std::vector<Milliseconds> times;
    for (int i = 0; i < 21; ++i) {
        const auto start = session.clock.now();
        benchmark::DoNotOptimize(scanItems(platform, busiest));
        times.push_back(session.clock.now() - start);
    }
    std::nth_element(times.begin(), times.begin() + 10, times.end());
    return times[10];
}

/// Measures whole discoveries, and reports the slowest of them against `limit`.
void measureDiscoveries(benchmark::State& state, Session& session, Milliseconds limit) {
    const Platform platform = session.platform();
    Milliseconds slowest{0};
    for (auto _ : state) {
        const auto start = session.clock.now();
        benchmark::DoNotOptimize(ItemProvider::discoverItems(platform, session.apps));
        const Milliseconds elapsed = session.clock.now() - start;
        slowest = std::max(slowest, elapsed);
        state.SetIterationTime(elapsed.count() / 1000);
    }
    state.counters["slowest_ms"] = slowest.count();
    state.counters["limit_ms"] = limit.count();
    state.counters["slowest/limit"] = slowest / limit;
}

/// 400 applications that answer in 1 ms each, 60 of them with items; no menu bar agent.
void discoveryOf400Applications(benchmark::State& state) {
    Session session(1ms);
    session.launchMany(400, 60);
    const Milliseconds chain = slowestChain(session);
    state.counters["chain_ms"] = chain.count();
    measureDiscoveries(state, session, 1.5 * chain + 10ms);
}
BENCHMARK(discoveryOf400Applications)->UseManualTime()->Iterations(50)->Unit(benchmark::kMillisecond);

/// The same with a menu bar agent that lays out all items and answers at once: what the snapshot and the matching add.
void discoveryOf400ApplicationsWithAnAgent(benchmark::State& state) {
    Session session(1ms);
    session.launchMany(400, 60);
    session.launchAgent(0ms, session.items.size());
    const Milliseconds chain = slowestChain(session);
    state.counters["chain_ms"] = chain.count();
    measureDiscoveries(state, session, 1.5 * chain + 10ms);
}
BENCHMARK(discoveryOf400ApplicationsWithAnAgent)->UseManualTime()->Iterations(50)->Unit(benchmark::kMillisecond);

/// The argument says how many of the 400 never answer. All of the hung ones have items in the menu bar.
void discoveryWithHungApplications(benchmark::State& state) {
    Session session(1ms);
    const auto hung = static_cast<std::size_t>(state.range(0));
    session.launchMany(400 - hung, 60);
    for (std::size_t i = 0; i < hung; ++i) session.launch(2, true);
    session.launchAgent(0ms, session.items.size());
    measureDiscoveries(state, session, 1.1 * scanTimeout);
}
BENCHMARK(discoveryWithHungApplications)
    ->Arg(1)
    ->Arg(40)
    ->Arg(200)
    ->Arg(340)
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);

/// What the snapshot does with agents whose answers cost nothing. The argument is the number of slots, all drawn, which is
/// the worst case of the overlap test.
void geometrySnapshot(benchmark::State& state) {
    Session session(0ms);
    session.launchMany(60, 60);
    const auto slots = static_cast<std::size_t>(state.range(0));
    session.launchAgent(0ms, slots);
    const Platform platform = session.platform();
    for (auto _ : state) benchmark::DoNotOptimize(MenuBarGeometry::snapshot(platform));
}
BENCHMARK(geometrySnapshot)->Arg(50)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

/// The requests that a snapshot of as many slots sends, alone: the difference to `geometrySnapshot` is its own work.
void theSameRequestsAlone(benchmark::State& state) {
    Session session(0ms);
    session.launchMany(60, 60);
    const auto slots = static_cast<std::size_t>(state.range(0));
    session.launchAgent(0ms, slots);
    const Accessibility& accessibility = session.accessibility;
    const auto application = accessibility.applicationElement(agentPID);
    const auto listOf = [&](const AccessibilityElement& element, const char* attribute) {
        return std::get<AttributeValue::Array>(accessibility.copyAttributeValue(element, attribute).value.content);
    };
    for (auto _ : state) {
        const auto windows = listOf(application, "AXWindows");
        for (const auto& child : listOf(std::get<AccessibilityElement>(windows[0].content), "AXChildren")) {
            const auto& slot = std::get<AccessibilityElement>(child.content);
            benchmark::DoNotOptimize(accessibility.copyAttributeValue(slot, "AXPosition"));
            benchmark::DoNotOptimize(accessibility.copyAttributeValue(slot, "AXSize"));
            const auto shown = listOf(slot, "AXChildren");
            const auto& item = std::get<AccessibilityElement>(shown[0].content);
            benchmark::DoNotOptimize(accessibility.copyAttributeValue(item, "AXDescription"));
            benchmark::DoNotOptimize(accessibility.copyAttributeValue(item, "AXTitle"));
        }
    }
}
BENCHMARK(theSameRequestsAlone)->Arg(50)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace ovin
