// How long a discovery takes over real threads, with stand-in applications that take real time for every answer; how that
// grows, beside a scan of one application after the other; and how much of a geometry snapshot is the snapshot's own work.
// docs/benchmarks.md holds the results and how to repeat them.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <set>
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

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The time of one scan of the application with the longest chain of reads, alone.
Milliseconds slowestChain(Session& session) {
    const Platform platform = session.platform();
    const std::vector<AppInfo> busiest{session.apps[itemsOfTheBusiest - 1]};
    std::vector<double> times;
    for (int i = 0; i < 21; ++i) {
        const auto start = session.clock.now();
        benchmark::DoNotOptimize(scanItems(platform, busiest));
        times.push_back(Milliseconds(session.clock.now() - start).count());
    }
    return Milliseconds(median(times));
}

/// Measures the work; reports the fastest, the median and the slowest, and returns the slowest.
Milliseconds measure(benchmark::State& state, Session& session, const std::function<void()>& work) {
    std::vector<double> times;
    for (auto _ : state) {
        const auto start = session.clock.now();
        work();
        const Milliseconds elapsed = session.clock.now() - start;
        times.push_back(elapsed.count());
        state.SetIterationTime(elapsed.count() / 1000);
    }
    state.counters["fastest_ms"] = *std::min_element(times.begin(), times.end());
    state.counters["median_ms"] = median(times);
    return Milliseconds(state.counters["slowest_ms"] = *std::max_element(times.begin(), times.end()));
}

Milliseconds measureDiscoveries(benchmark::State& state, Session& session) {
    const Platform platform = session.platform();
    return measure(state, session, [&] { benchmark::DoNotOptimize(ItemProvider::discoverItems(platform, session.apps)); });
}

/// The same with the slowest of them against `limit`.
void measureDiscoveries(benchmark::State& state, Session& session, Milliseconds limit) {
    const Milliseconds slowest = measureDiscoveries(state, session);
    state.counters["limit_ms"] = limit.count();
    state.counters["slowest/limit"] = slowest / limit;
}

/// The reference: one application after the other, and neither menu bar nor order.
void measureSerialScans(benchmark::State& state, Session& session) {
    const Platform platform = session.platform();
    measure(state, session, [&] {
        for (const AppInfo& app : session.apps) benchmark::DoNotOptimize(scanItems(platform, {app}));
    });
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

/// 400 applications; the argument says how many of them never answer. All of the hung ones have items in the menu bar.
void launchSomeHung(Session& session, const benchmark::State& state) {
    const auto hung = static_cast<std::size_t>(state.range(0));
    session.launchMany(400 - hung, 60);
    for (std::size_t i = 0; i < hung; ++i) session.launch(2, true);
    session.launchAgent(0ms, session.items.size());
}

void discoveryWithHungApplications(benchmark::State& state) {
    Session session(1ms);
    launchSomeHung(session, state);
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

/// As many applications as the argument says, of which 15 in 100 have items, but at least five, so that the longest chain
/// of reads is always the same.
void launchForGrowth(Session& session, const benchmark::State& state) {
    const auto total = static_cast<std::size_t>(state.range(0));
    session.launchMany(total, std::max(itemsOfTheBusiest, total * 15 / 100));
    session.launchAgent(0ms, session.items.size());
}

void discoveryOfManyApplications(benchmark::State& state) {
    Session session(1ms);
    launchForGrowth(session, state);
    state.counters["chain_ms"] = slowestChain(session).count();
    measureDiscoveries(state, session);
}
BENCHMARK(discoveryOfManyApplications)
    ->ArgsProduct({{10, 25, 50, 100, 200, 400, 600, 800}})
    ->UseManualTime()
    ->Iterations(30)
    ->Unit(benchmark::kMillisecond);

void serialScanOfManyApplications(benchmark::State& state) {
    Session session(1ms);
    launchForGrowth(session, state);
    measureSerialScans(state, session);
}
BENCHMARK(serialScanOfManyApplications)
    ->ArgsProduct({{10, 25, 50, 100, 200, 400, 600, 800}})
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

void discoveryWithMoreAndMoreHung(benchmark::State& state) {
    Session session(1ms);
    launchSomeHung(session, state);
    measureDiscoveries(state, session);
}
BENCHMARK(discoveryWithMoreAndMoreHung)
    ->ArgsProduct({{0, 1, 5, 10, 20, 40, 80, 120, 160, 200}})
    ->UseManualTime()
    ->Iterations(8)
    ->Unit(benchmark::kMillisecond);

/// A scan waits a quarter of a second for each application that does not answer: 50 s for the most of them.
void serialScanWithMoreAndMoreHung(benchmark::State& state) {
    Session session(1ms);
    launchSomeHung(session, state);
    measureSerialScans(state, session);
}
BENCHMARK(serialScanWithMoreAndMoreHung)
    ->ArgsProduct({{0, 1, 5, 10, 20, 40, 200}})
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// What a snapshot with all titles does with agents and owners whose answers cost nothing. The argument is the number of
/// slots, all drawn, which is the worst case of the overlap test.
void geometrySnapshot(benchmark::State& state) {
    Session session(0ms);
    session.launchMany(60, 60);
    const auto slots = static_cast<std::size_t>(state.range(0));
    session.launchAgent(0ms, slots);
    const Platform platform = session.platform();
    std::set<ProcessID> owners;
    for (const AppInfo& app : session.apps) owners.insert(app.pid);
    for (auto _ : state) {
        auto snapshot = MenuBarGeometry::snapshot(platform);
        MenuBarGeometry::readDrawnTitles(platform, *snapshot, owners);
        benchmark::DoNotOptimize(snapshot);
    }
}
BENCHMARK(geometrySnapshot)->Arg(50)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

/// Only the requests that a snapshot of as many slots sends. The difference to `geometrySnapshot` is the snapshot's own
/// work.
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
