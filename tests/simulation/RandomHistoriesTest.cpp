// Random histories of a computer on which the program is used, quit, and crashes, while the user and the hardware do what
// they like. Every history follows from its seed alone:
//
//     OVIN_SIMULATION_SEED=17 build/dev/tests/simulation/simulation_tests --gtest_filter='RandomHistories.*'
//
// plays one and tells what happens in it; OVIN_SIMULATION_HISTORIES sets how many are played.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>

#include "tests/simulation/SimulatedComputer.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Answer = MemoryDisplays::Answer;
using Fault = SimulatedComputer::Fault;
using Items = SimulatedComputer::Items;

/// Gives equal numbers for equal seeds with every library, and is cheap to begin.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    [[nodiscard]] int below(int count) {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return static_cast<int>((mixed ^ (mixed >> 31)) % static_cast<std::uint64_t>(count));
    }
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }

private:
    std::uint64_t state_;
};

class RandomHistory {
public:
    RandomHistory(std::uint64_t seed, bool isTraced) : random_(seed), isTraced_(isTraced), computer_(1 + random_.below(2)) {
        computer_.faults = [this](int) { return fault(); };
        computer_.noticeDelay = [this] { return oneOf({0ms, 0ms, 200ms, 700ms, 2500ms}); };
        computer_.latency = oneOf({0ms, 0ms, 200ms});
        computer_.setItems(randomItems());
    }

    /// What went wrong; nothing when all was well.
    [[nodiscard]] std::optional<std::string> play() {
        try {
            for (int steps = 5 + random_.below(8); steps > 0; --steps) {
                guarded([this] { step(); });
                traceState();
                computer_.check();
            }
            finish();
            return std::nullopt;
        } catch (const Violation& violation) {
            trace("VIOLATION: ", violation.what);
            return violation.what;
        }
    }

    [[nodiscard]] const SimulatedComputer::Counts& counts() const { return computer_.counts; }
    [[nodiscard]] const std::string& traced() const { return trace_; }

private:
    template <typename... Parts>
    void trace(const Parts&... parts) {
        if (!isTraced_) return;
        std::ostringstream line;
        (line << ... << parts) << '\n';
        trace_ += line.str();
    }
    void traceState() {
        if (isTraced_) trace("    ", computer_.description());
    }

    template <typename Action>
    void guarded(const Action& action) {
        try {
            action();
        } catch (const Crash&) {
            trace("  crash");
            computer_.die();
        }
    }

    void step() {
        if (!computer_.isRunning() && !random_.oneIn(4)) return launch();
        switch (random_.below(17)) {
            case 0:
            case 1:
            case 2:
            case 3:
                return begin();
            case 4:
            case 5:
                return end();
            case 6:
            case 7:
                return pass();
            case 8:
                return quit();
            case 9:
                return armCrash();
            case 10:
                return misbehave();
            case 11:
                trace("unplug the main display");
                return computer_.unplugMainDisplay();
            case 12:
            case 13:
                return plugIn();
            case 14:
            case 15:
                return changeScreens();
            default:
                return changeItems();
        }
    }

    [[nodiscard]] std::chrono::milliseconds oneOf(std::initializer_list<std::chrono::milliseconds> times) {
        return times.begin()[random_.below(static_cast<int>(times.size()))];
    }

    void launch() {
        if (random_.oneIn(6)) armCrash();
        trace("launch");
        computer_.launch();
    }

    void begin() {
        if (!computer_.isRunning()) return;
        if (random_.oneIn(3)) armCrash();
        trace("begin");
        computer_.begin();
        // An end may come while the session starts.
        if (!random_.oneIn(4)) pass();
    }

    void end() {
        if (!computer_.isRunning()) return;
        trace("end");
        computer_.end();
    }

    void pass() {
        if (!computer_.isRunning()) return;
        const auto time = oneOf({0ms, 0ms, 300ms, 400ms, 1500ms, 3000ms});
        trace("pass ", time.count(), " ms");
        computer_.pass(time);
    }

    void quit() {
        if (!computer_.isRunning()) return;
        if (random_.oneIn(2)) end();
        trace("quit");
        computer_.die();
    }

    void armCrash() {
        const CrashPoint point{computer_.isRunning() ? computer_.effectCount() + random_.below(5) : random_.below(3),
                               crashPhases[random_.below(4)]};
        trace("will crash at effect ", point.effect, " phase ", static_cast<int>(point.phase));
        computer_.crashPoint = point;
    }

    void misbehave() {
        misbehaviour_ = misbehaviour_ == 0 ? 1 + random_.below(3) : 0;
        trace("the system misbehaves: ", misbehaviour_);
    }

    [[nodiscard]] Fault fault() {
        if (misbehaviour_ == 0 || !random_.oneIn(2)) return {};
        const Fault fault{(misbehaviour_ & 1) != 0, (misbehaviour_ & 2) == 0 ? Answer::switches
                                                    : random_.oneIn(2)       ? Answer::refuses
                                                                             : Answer::pretends};
        trace("  a fault: ", fault.settingsRefuse ? "settings refuse " : "",
              fault.answer == Answer::switches ? "" : "modes stay");
        return fault;
    }

    void plugIn() {
        const bool inItsOwnMode = random_.oneIn(2);
        const bool underAnotherID = random_.oneIn(4);
        trace("plug in", inItsOwnMode ? " in its own mode" : "", underAnotherID ? " as another" : "");
        computer_.plugIn(inItsOwnMode, underAnotherID);
    }

    void changeScreens() {
        if (computer_.displayCount() == 0 || random_.oneIn(2)) {
            isMirrored_ = !isMirrored_;
            trace(isMirrored_ ? "mirror" : "stop mirroring");
            return computer_.setMirrored(isMirrored_);
        }
        const auto display = static_cast<std::size_t>(random_.below(static_cast<int>(computer_.displayCount())));
        if (display > 0 && random_.oneIn(2)) {
            trace("make display number ", display + 1, " the main one");
            return computer_.makeMain(display);
        }
        const auto mode = static_cast<std::size_t>(random_.below(4));
        trace("choose mode ", mode + 1, " of display number ", display + 1);
        computer_.chooseMode(display, mode);
    }

    void changeItems() {
        items_ = randomItems();
        trace("items: ", static_cast<int>(items_));
        computer_.setItems(items_);
    }

    [[nodiscard]] Items randomItems() {
        if (!random_.oneIn(6)) return Items::withoutMenuBar;
        return static_cast<Items>(1 + random_.below(3));
    }

    /// Everything works again: whatever has happened, the display that is widened comes back with the next launch, or with
    /// the next change of the screens, and organizing goes on.
    void finish() {
        trace("everything works again");
        misbehaviour_ = 0;
        computer_.crashPoint.reset();
        if (computer_.isRunning() && random_.oneIn(2)) {
            computer_.plugEverythingIn();
            computer_.passUntilIdle();
            if (computer_.isActive()) end();
            computer_.check();
            traceState();
            trace("organize");
            computer_.checkOrganizingIsPossible();
            traceState();
        }
        if (computer_.isRunning()) computer_.die();
        computer_.plugEverythingIn();
        trace("launch");
        computer_.launch();
        computer_.passUntilIdle();
        traceState();
        computer_.checkNothingIsOwed();
    }

    Random random_;
    bool isTraced_;
    std::string trace_;
    SimulatedComputer computer_;
    int misbehaviour_ = random_.oneIn(4) ? 1 + random_.below(3) : 0;
    bool isMirrored_ = false;
    Items items_ = Items::withoutMenuBar;
};

std::optional<std::uint64_t> numberFromEnvironment(const char* name) {
    const char* text = std::getenv(name);
    if (text == nullptr) return std::nullopt;
    return std::strtoull(text, nullptr, 10);
}

/// Whether all was well.
bool playTraced(std::uint64_t seed) {
    RandomHistory history(seed, true);
    const auto failure = history.play();
    if (failure) ADD_FAILURE() << *failure << "\nOVIN_SIMULATION_SEED=" << seed << "\n" << history.traced();
    if (!failure) std::printf("%s", history.traced().c_str());
    return !failure;
}

TEST(RandomHistories, NoModeOfADisplayIsEverLost) {
    if (const auto seed = numberFromEnvironment("OVIN_SIMULATION_SEED")) {
        playTraced(*seed);
        return;
    }
    const std::uint64_t count = numberFromEnvironment("OVIN_SIMULATION_HISTORIES").value_or(OVIN_SIMULATED_HISTORIES);
    const auto start = std::chrono::steady_clock::now();
    SimulatedComputer::Counts all;
    long played = 0;
    for (std::uint64_t seed = 1; seed <= count; ++seed) {
        RandomHistory history(seed, false);
        if (history.play() && !playTraced(seed)) break;
        ++played;
        all.launches += history.counts().launches;
        all.effects += history.counts().effects;
        all.crashes += history.counts().crashes;
        all.recoveries += history.counts().recoveries;
        all.starts += history.counts().starts;
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%ld histories: %ld launches, %ld started sessions, %ld effects, %ld crashes, %ld recoveries; %.1f s\n",
                played, all.launches, all.starts, all.effects, all.crashes, all.recoveries, seconds.count());
    if (count < 1000) return;
    // Checks that the histories are worth playing.
    EXPECT_GT(all.crashes, static_cast<long>(count) / 20);
    EXPECT_GT(all.recoveries, static_cast<long>(count) / 20);
    EXPECT_GT(all.starts, static_cast<long>(count) / 20);
}

}  // namespace
}  // namespace ovin
