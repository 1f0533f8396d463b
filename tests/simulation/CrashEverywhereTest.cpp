// Lets the program die before, in and after every effect of a session, and of each recovery from such a crash, until no
// state is left that has not been looked at.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/simulation/SimulatedComputer.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Answer = MemoryDisplays::Answer;
using Fault = SimulatedComputer::Fault;

/// One run of the program in a history: where it dies, if it does, and which effect goes wrong, if one does.
struct Life {
    std::optional<CrashPoint> crash = {};
    int faultyEffect = -1;
    Fault fault = {};
};

enum class Displays {
    one,
    two,
    /// Before each launch but the first the user makes the other one the main one.
    twoInTurns,
};

void organize(SimulatedComputer& computer) {
    computer.begin();
    computer.passUntilIdle();
    computer.check();
    computer.end();
    computer.passUntilIdle();
    computer.check();
}

struct End {
    std::string state;
    bool isDead = false;
    /// Of the last run.
    int effectCount = 0;
};

/// The first run is a whole session, the others are what a launch does by itself.
class History {
public:
    explicit History(std::vector<Life> runs, Displays displays = Displays::one)
        : computer(displays == Displays::one ? 1 : 2), runs_(std::move(runs)), displays_(displays) {}

    [[nodiscard]] End play() {
        End result;
        for (std::size_t i = 0; i < runs_.size(); ++i) result.isDead = !survives(runs_[i], i == 0);
        result.effectCount = computer.effectCount();
        if (computer.isRunning()) computer.die();
        computer.check();
        result.state = computer.description();
        return result;
    }

    /// Checks that the next launch pays what is owed when everything works, whatever happened before, and that organizing
    /// goes on.
    void recover() {
        computer.crashPoint.reset();
        computer.faults = nullptr;
        launchAgain();
        computer.passUntilIdle();
        computer.checkNothingIsOwed();
        computer.checkOrganizingIsPossible();
        computer.end();
        computer.checkNothingIsOwed();
    }

    SimulatedComputer computer;

private:
    [[nodiscard]] bool survives(const Life& run, bool isSession) {
        if (computer.isRunning()) computer.die();
        try {
            computer.crashPoint = run.crash;
            computer.faults = [run](int effect) { return effect == run.faultyEffect ? run.fault : Fault{}; };
            if (isSession) {
                computer.launch();
                organize(computer);
            } else {
                launchAgain();
            }
            computer.passUntilIdle();
            computer.check();
            return true;
        } catch (const Crash&) {
            computer.die();
            return false;
        }
    }

    void launchAgain() {
        if (displays_ == Displays::twoInTurns) computer.makeMain(1);
        computer.launch();
    }

    std::vector<Life> runs_;
    Displays displays_;
};

struct Totals {
    long histories = 0;
    long crashes = 0;
    std::set<std::string> states;
    std::size_t deepest = 0;
};

std::string nameOf(const std::vector<Life>& runs) {
    std::string name;
    for (const Life& run : runs) {
        name += run.crash ? "crash at effect " + std::to_string(run.crash->effect) + " phase " +
                                std::to_string(static_cast<int>(run.crash->phase))
                          : std::string("no crash");
        if (run.faultyEffect >= 0) name += ", fault at effect " + std::to_string(run.faultyEffect);
        name += "; ";
    }
    return name;
}

/// Plays the history, lets it recover, and appends to `next` every history that is longer by a crash of the last run.
void explore(Displays displays, const std::vector<Life>& runs, std::deque<std::vector<Life>>& next, Totals& totals) {
    const auto play = [&](const std::vector<Life>& played) {
        History history(played, displays);
        const End end = history.play();
        history.recover();
        ++totals.histories;
        totals.crashes += history.computer.counts.crashes;
        return end;
    };
    const int effectCount = play(runs).effectCount;
    for (int effect = 0; effect < effectCount; ++effect) {
        for (const CrashPhase phase : crashPhases) {
            auto crashing = runs;
            crashing.back().crash = {{effect, phase}};
            const End end = play(crashing);
            ASSERT_TRUE(end.isDead) << nameOf(crashing);
            const bool isNew = totals.states.insert(end.state).second;
            totals.deepest = std::max(totals.deepest, crashing.size());
            // A state that was seen before leads to nothing new. Short histories are played all the same.
            const std::size_t literalDepth = runs.front().faultyEffect < 0 ? 3 : 1;
            if (!isNew && crashing.size() >= literalDepth) continue;
            auto longer = crashing;
            longer.push_back({});
            next.push_back(longer);
            if (!isNew) continue;
            for (const auto& recovery : {Life{{}, 0, {true, Answer::refuses}}, Life{{}, 0, {false, Answer::pretends}},
                                         Life{{}, 1, {true, Answer::refuses}}, Life{{}, 2, {true, Answer::refuses}}}) {
                longer.back() = recovery;
                next.push_back(longer);
            }
        }
    }
}

Totals exploreAll(Displays displays) {
    std::vector<Life> firstRuns{Life{}};
    // And the same where one effect of the session goes wrong.
    for (int effect = 0; effect < 6; ++effect) {
        firstRuns.push_back({{}, effect, {true, Answer::refuses}});
        firstRuns.push_back({{}, effect, {false, Answer::pretends}});
    }
    Totals totals;
    std::deque<std::vector<Life>> next;
    for (const Life& run : firstRuns) next.push_back({run});
    while (!next.empty()) {
        const std::vector<Life> runs = next.front();
        next.pop_front();
        try {
            explore(displays, runs, next, totals);
        } catch (const Violation& violation) {
            ADD_FAILURE() << violation.what << " in: " << nameOf(runs);
        }
    }
    return totals;
}

TEST(CrashEverywhere, AWholeSessionHasEffectsToDieAt) {
    History history({Life{}});
    EXPECT_EQ(history.play().effectCount, 6);
    EXPECT_EQ(history.computer.counts.starts, 1);
    history.recover();
}

TEST(RefusedSettings, WhatTheUserChoosesStaysForAsLongAsTheProgramRunsThoughTheRecordCannotBeRemoved) {
    // From the removal of the record on, or from something before it.
    for (int firstRefused = 0; firstRefused <= 6; ++firstRefused) {
        for (std::size_t mode = 0; mode < 4; ++mode) {
            History history({Life{}});
            SimulatedComputer& computer = history.computer;
            computer.faults = [=](int effect) { return Fault{effect >= firstRefused, Answer::switches}; };
            computer.launch();
            organize(computer);
            computer.chooseMode(0, mode);
            organize(computer);
            computer.die();
            history.recover();
        }
    }
}

void exploreAndTell(Displays displays) {
    const Totals totals = exploreAll(displays);
    EXPECT_GT(totals.states.size(), 2u);
    EXPECT_GT(totals.crashes, 50);
    std::printf("%ld histories, %ld crashes, %zu states in which the program dies, up to %zu times in a row\n",
                totals.histories, totals.crashes, totals.states.size(), totals.deepest);
}

TEST(CrashEverywhere, WhereverTheProgramDiesTheDisplayComesBack) { exploreAndTell(Displays::one); }

TEST(CrashEverywhere, WhereverTheProgramDiesBesideAnotherDisplayTheOneThatIsWidenedComesBack) {
    exploreAndTell(Displays::two);
}

TEST(CrashEverywhere, WhereverTheProgramDiesTheDisplayComesBackAlsoWhenItIsNotTheMainOneAnyMore) {
    exploreAndTell(Displays::twoInTurns);
}

}  // namespace
}  // namespace ovin
