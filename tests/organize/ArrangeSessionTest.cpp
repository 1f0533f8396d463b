#include "organize/ArrangeSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Outcome = BeginResult::Outcome;

constexpr const char* mirroredText =
    "Your displays are mirrored, and mirrored displays change resolution together. Turn mirroring off in System Settings → "
    "Displays, then try again.";
constexpr const char* noWiderText =
    "This display has no wider resolution, so some items stay out of reach. An external display, or quitting a few menu bar "
    "apps, makes room.";
constexpr const char* refusedText = "macOS refused the resolution change. Nothing was altered.";

/// Tasks that remember with which priority each was started.
class RecordingTasks final : public Tasks {
public:
    explicit RecordingTasks(Tasks& tasks) : tasks_(tasks) {}

    std::vector<Priority> priorities;

    void start(Priority priority, std::function<void()> work) override {
        priorities.push_back(priority);
        tasks_.start(priority, std::move(work));
    }
    void forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                 const std::function<void(std::size_t)>& finished) override {
        tasks_.forEach(count, child, finished);
    }

private:
    Tasks& tasks_;
};

class ArrangeSessionTest : public testing::Test {
protected:
    static constexpr DisplayMode usual{1, 1512, 982, 3024, true};
    static constexpr DisplayMode wide{2, 2560, 1600, 2560, true};

    MenuBarScene scene;
    MemoryWorld& world = scene.world;
    RecordingTasks tasks{world.time};
    Platform platform = world.platform(world.accessibility, world.time, tasks);
    DisplayWidener widener{platform};
    std::shared_ptr<ArrangeSession> session = ArrangeSession::create(platform, widener);
    std::vector<BeginResult> results;
    int warnings = 0;
    std::vector<MemoryElement> items;

    void SetUp() override {
        setModes({usual, wide});
        session->onItemsStillDoNotFit = [this] { ++warnings; };
        scene.launchAgent();
        items = scene.launchWithItems(512, "Net", {"Wi-Fi", "VPN"});
        world.process.setEnvironment("OVIN_DEBUG", "");
    }

    void setModes(std::vector<DisplayMode> modes) {
        world.displays.displays = {{1, {{0, 0}, {1512, 982}}, std::move(modes), usual, false}};
    }
    [[nodiscard]] MemoryDisplays::Display& display() { return world.displays.displays.at(0); }

    void begin() {
        session->begin([this](const BeginResult& result) { results.push_back(result); });
    }
    /// Up to the moment at which the display has been widened, if it is.
    void work() { world.time.advance(0ms); }
    void beginAndStart() {
        begin();
        world.time.advance(400ms);
    }

    [[nodiscard]] std::vector<Outcome> outcomes() const {
        std::vector<Outcome> all;
        for (const BeginResult& result : results) all.push_back(result.outcome);
        return all;
    }
    [[nodiscard]] std::size_t discoveryCount() const {
        std::size_t count = 0;
        for (const std::string& line : world.log.lines()) count += line.starts_with("Ovin DEBUG AX") ? 1U : 0U;
        return count;
    }
    /// The width of the chosen mode, among modes of every width around `expected`.
    int widthChosenAround(int expected) {
        std::vector<DisplayMode> modes{usual};
        for (int id = 2, width = expected - 3; width <= expected + 3; ++width, ++id) {
            modes.push_back({id, width, 1000, width, true});
        }
        setModes(std::move(modes));
        begin();
        work();
        return display().current.value_or(usual).width;
    }
    void unplug() {
        unplugged_ = world.displays.displays;
        world.displays.displays = {{5, {}, {usual, wide}, usual, false}};
    }
    void plugInAgain() { world.displays.displays = unplugged_; }

private:
    std::vector<MemoryDisplays::Display> unplugged_;
};

// Beginning

TEST_F(ArrangeSessionTest, UndrawnItemsWidenTheDisplayAndTheSessionStarts) {
    scene.hide(items);
    begin();
    EXPECT_EQ(display().current, usual);
    work();
    EXPECT_EQ(display().current, wide);
    EXPECT_TRUE(session->isActive());
    EXPECT_THAT(results, IsEmpty());
    world.time.advance(399ms);
    EXPECT_THAT(results, IsEmpty());
    world.time.advance(1ms);
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::started}));
    world.time.runUntilIdle();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
}

TEST_F(ArrangeSessionTest, NothingIsWidenedWhenEveryItemIsDrawn) {
    scene.draw(items);
    begin();
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::notNeeded}));
    EXPECT_EQ(world.displays.applyCount, 0);
    EXPECT_FALSE(session->isActive());
    EXPECT_FALSE(widener.isWidened());
    EXPECT_EQ(discoveryCount(), 1u);
}

TEST_F(ArrangeSessionTest, AResultNeverComesWithinTheCallThatAskedForIt) {
    scene.draw(items);
    begin();
    EXPECT_THAT(results, IsEmpty());
    EXPECT_FALSE(session->isActive());
}

TEST_F(ArrangeSessionTest, ItemsWithoutASlotAreMissingAlthoughEverySlotIsDrawn) {
    scene.draw({items[0]});
    begin();
    work();
    EXPECT_EQ(discoveryCount(), 1u);
    EXPECT_EQ(display().current, wide);
    EXPECT_TRUE(session->isActive());
}

TEST_F(ArrangeSessionTest, WhatTheGeometryCallsUndrawnIsNotSearchedFor) {
    scene.hide(items);
    begin();
    work();
    EXPECT_EQ(discoveryCount(), 0u);
}

TEST_F(ArrangeSessionTest, TheNeededWidthIsThatOfAllItemsAnd560Points) {
    for (int i = 0; i < 30; ++i) scene.addSlot(1000, 50, items[0]);
    EXPECT_EQ(widthChosenAround(2060), 2060);
}

TEST_F(ArrangeSessionTest, WithoutGeometryTheNeededWidthIs1960Points) {
    world.workspace.quit(MenuBarScene::agentPID);
    EXPECT_EQ(widthChosenAround(1960), 1960);
    EXPECT_EQ(discoveryCount(), 0u);
}

TEST_F(ArrangeSessionTest, OnADesktopWhoseBarDoesNotTellItsLayoutNothingIsWidenedAndTheAnswerSaysWhy) {
    world.resources.spoken = &desktopWords();
    world.workspace.quit(MenuBarScene::agentPID);
    begin();
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::unavailable, *desktopWords().withoutLayout}));
    EXPECT_EQ(world.displays.applyCount, 0);
    EXPECT_FALSE(session->isActive());
}

TEST_F(ArrangeSessionTest, ALayoutWhoseReadingBreaksOffIsReadAgain) {
    world.resources.spoken = &desktopWords();
    scene.draw(items);
    world.accessibility.setHung(MenuBarScene::agentPID, true);
    begin();
    world.time.advance(4s);
    EXPECT_THAT(results, IsEmpty());
    world.accessibility.setHung(MenuBarScene::agentPID, false);
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::notNeeded}));
    EXPECT_EQ(world.displays.applyCount, 0);
}

TEST_F(ArrangeSessionTest, ALayoutThatCannotBeReadToTheEndIsUnknownAndNotMissing) {
    world.resources.spoken = &desktopWords();
    scene.draw(items);
    world.accessibility.setHung(MenuBarScene::agentPID, true);
    begin();
    world.time.advance(9s);
    EXPECT_THAT(results, IsEmpty());
    world.time.advance(7s);
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
    EXPECT_EQ(display().current, wide);
}

TEST_F(ArrangeSessionTest, WhereNoLayoutIsNeededToWidenNobodyWaitsForOne) {
    world.accessibility.setHung(MenuBarScene::agentPID, true);
    begin();
    world.time.advance(2s);
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
}

TEST_F(ArrangeSessionTest, AnEndWhileALayoutIsReadAgainSupersedesTheBegin) {
    world.resources.spoken = &desktopWords();
    world.accessibility.setHung(MenuBarScene::agentPID, true);
    begin();
    world.time.advance(3s);
    session->end();
    world.time.advance(3s);
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded));
    EXPECT_EQ(world.displays.applyCount, 0);
}

TEST_F(ArrangeSessionTest, OnADesktopWhoseBarMayNotBeReadNothingIsWidenedAndTheUserIsAsked) {
    world.resources.spoken = &desktopWords();
    scene.hide(items);
    const auto expectQuestion = [this](int count) {
        begin();
        world.time.runUntilIdle();
        EXPECT_EQ(outcomes().back(), Outcome::notPermitted);
        EXPECT_EQ(world.accessibility.promptCount(), count);
        EXPECT_EQ(world.displays.applyCount, 0);
    };
    scene.agent().fail("AXWindows", AccessibilityError::apiDisabled);
    expectQuestion(1);
    world.accessibility.setTrusted(false);
    expectQuestion(2);
}

TEST_F(ArrangeSessionTest, WhereNoDisplayCanSwitchItsModeTheAnswerSaysSo) {
    world.resources.spoken = &desktopWords();
    world.displays.areModesFixed = true;
    scene.hide(items);
    begin();
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::unavailable, desktopWords().fixedModes}));
    EXPECT_EQ(world.displays.applyCount, 0);
}

TEST_F(ArrangeSessionTest, TheUserWaitsForTheBeginningAndNotForTheCheck) {
    scene.hide(items);
    begin();
    EXPECT_THAT(tasks.priorities, ElementsAre(Tasks::Priority::userInitiated));
    world.time.runUntilIdle();
    EXPECT_THAT(tasks.priorities, ElementsAre(Tasks::Priority::userInitiated, Tasks::Priority::utility));
}

TEST_F(ArrangeSessionTest, OnlyApplicationsThatRanAtTheBeginningAreSearched) {
    scene.draw(items);
    begin();
    scene.launchWithItems(513, "Late", {"t"});
    world.time.runUntilIdle();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::notNeeded));
}

TEST_F(ArrangeSessionTest, TheFitCheckSearchesApplicationsThatHaveComeSince) {
    scene.draw({items[0]});
    beginAndStart();
    scene.draw({items[1]});
    world.time.advance(1000ms);
    scene.launchWithItems(513, "Late", {"t"});
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 1);
}

TEST_F(ArrangeSessionTest, MirroredDisplaysAreExplained) {
    scene.hide(items);
    display().isMirrored = true;
    begin();
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::unavailable, mirroredText}));
    EXPECT_FALSE(session->isActive());
}

TEST_F(ArrangeSessionTest, ADisplayWithoutAWiderModeIsExplained) {
    scene.hide(items);
    setModes({usual});
    begin();
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::unavailable, noWiderText}));
    EXPECT_FALSE(session->isActive());
}

TEST_F(ArrangeSessionTest, ARefusalIsExplained) {
    scene.hide(items);
    world.displays.answer = MemoryDisplays::Answer::refuses;
    begin();
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::unavailable, refusedText}));
    EXPECT_FALSE(session->isActive());
    EXPECT_EQ(warnings, 0);
}

TEST_F(ArrangeSessionTest, AfterAnyResultButAStartAnotherSessionCanBegin) {
    scene.hide(items);
    display().isMirrored = true;
    begin();
    work();
    display().isMirrored = false;
    world.displays.answer = MemoryDisplays::Answer::refuses;
    begin();
    work();
    world.displays.answer = MemoryDisplays::Answer::switches;
    begin();
    session->end();
    work();
    beginAndStart();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::unavailable, Outcome::unavailable, Outcome::superseded, Outcome::started));
}

TEST_F(ArrangeSessionTest, ACompletionMayBeginAnew) {
    scene.hide(items);
    display().isMirrored = true;
    session->begin([this](const BeginResult& result) {
        results.push_back(result);
        display().isMirrored = false;
        begin();
    });
    world.time.runUntilIdle();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::unavailable, Outcome::started));
}

TEST_F(ArrangeSessionTest, ACompletionMayEndTheSession) {
    scene.hide(items);
    session->begin([this](const BeginResult& result) {
        results.push_back(result);
        session->end();
    });
    world.time.runUntilIdle();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
    EXPECT_EQ(display().current, usual);
    EXPECT_EQ(warnings, 0);
    EXPECT_EQ(discoveryCount(), 0u);
}

// Superseding

TEST_F(ArrangeSessionTest, ASecondBeginIsSupersededAtOnceAndTheFirstProceeds) {
    scene.hide(items);
    begin();
    begin();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded));
    work();
    begin();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded, Outcome::superseded));
    world.time.advance(400ms);
    begin();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded, Outcome::superseded, Outcome::started, Outcome::superseded));
    world.time.runUntilIdle();
    EXPECT_EQ(results.size(), 4u);
    EXPECT_EQ(world.displays.applyCount, 1);
}

TEST_F(ArrangeSessionTest, AnEndWhileItStartsSupersedesItAndLeavesTheDisplayAlone) {
    scene.hide(items);
    begin();
    session->end();
    EXPECT_THAT(results, IsEmpty());
    world.time.runUntilIdle();
    EXPECT_THAT(results, ElementsAre(BeginResult{Outcome::superseded}));
    EXPECT_EQ(world.displays.applyCount, 0);
    EXPECT_FALSE(session->isActive());
    EXPECT_FALSE(widener.isWidened());
}

TEST_F(ArrangeSessionTest, AnEndWhileItStartsSupersedesAlsoWhatWouldNotBeNeeded) {
    scene.draw(items);
    begin();
    session->end();
    world.time.runUntilIdle();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded));
}

TEST_F(ArrangeSessionTest, ACancelledStartStaysInTheWayUntilItHasReturned) {
    scene.hide(items);
    begin();
    session->end();
    begin();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded));
    work();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::superseded, Outcome::superseded));
    beginAndStart();
    EXPECT_EQ(outcomes().back(), Outcome::started);
}

TEST_F(ArrangeSessionTest, ASupersededBeginDoesNotGetTheReportOfTheOneInItsWay) {
    scene.hide(items);
    begin();
    std::vector<BeginResult> later;
    session->begin([&](const BeginResult& result) { later.push_back(result); });
    world.time.runUntilIdle();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
    EXPECT_THAT(later, ElementsAre(BeginResult{Outcome::superseded}));
}

// Ending

TEST_F(ArrangeSessionTest, AnEndBeforeTheReportRestoresTheDisplayAndNothingIsReported) {
    scene.hide(items);
    begin();
    world.time.advance(399ms);
    session->end();
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(session->isActive());
    world.time.runUntilIdle();
    EXPECT_THAT(results, IsEmpty());
    EXPECT_EQ(warnings, 0);
}

TEST_F(ArrangeSessionTest, ASessionThatFollowsAnEndedOneReportsInItsOwnTime) {
    scene.hide(items);
    begin();
    world.time.advance(300ms);
    session->end();
    begin();
    world.time.advance(399ms);
    EXPECT_THAT(results, IsEmpty());
    world.time.advance(1ms);
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
}

TEST_F(ArrangeSessionTest, TheEndPutsTheDisplayBack) {
    scene.hide(items);
    beginAndStart();
    session->end();
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(session->isActive());
    EXPECT_FALSE(widener.isWidened());
    EXPECT_EQ(world.screens.observerCount(), 0u);
    beginAndStart();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started, Outcome::started));
}

TEST_F(ArrangeSessionTest, AnEndWithoutSessionAndRecordDoesNothing) {
    session->end();
    EXPECT_EQ(world.displays.applyCount, 0);
    EXPECT_EQ(world.screens.observerCount(), 0u);
    EXPECT_THAT(world.log.lines(), IsEmpty());
    scene.hide(items);
    beginAndStart();
    EXPECT_THAT(outcomes(), ElementsAre(Outcome::started));
}

TEST_F(ArrangeSessionTest, TheFirstEndAfterALaunchUndoesWhatACrashLeft) {
    scene.hide(items);
    beginAndStart();
    DisplayWidener laterWidener{world.platform()};
    const auto later = ArrangeSession::create(world.platform(), laterWidener);
    EXPECT_FALSE(later->isActive());
    later->end();
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(laterWidener.isWidened());
}

TEST_F(ArrangeSessionTest, AnEndWithTheDisplayAwayWaitsForItOnce) {
    scene.hide(items);
    beginAndStart();
    unplug();
    session->end();
    EXPECT_FALSE(session->isActive());
    EXPECT_EQ(world.screens.observerCount(), 1u);
    session->end();
    EXPECT_EQ(world.screens.observerCount(), 1u);
    world.screens.change();
    EXPECT_EQ(world.screens.observerCount(), 1u);
    EXPECT_EQ(world.screens.registrationCount, 1);
    EXPECT_TRUE(widener.isWidened());

    plugInAgain();
    world.screens.change();
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(widener.isWidened());
    EXPECT_EQ(world.screens.observerCount(), 0u);
}

TEST_F(ArrangeSessionTest, AnEndThatSucceedsLateWaitsNoLonger) {
    scene.hide(items);
    beginAndStart();
    unplug();
    session->end();
    plugInAgain();
    session->end();
    EXPECT_EQ(display().current, usual);
    EXPECT_EQ(world.screens.observerCount(), 0u);
}

TEST_F(ArrangeSessionTest, AChangeThatIsToldLateDoesNotUndoTheNextSession) {
    scene.hide(items);
    beginAndStart();
    unplug();
    session->end();
    plugInAgain();
    session->end();
    EXPECT_EQ(display().current, usual);
    beginAndStart();
    ASSERT_TRUE(session->isActive());
    const auto widened = display().current;
    EXPECT_NE(widened, usual);
    world.screens.change();
    EXPECT_EQ(display().current, widened);
    EXPECT_TRUE(widener.isWidened());
    EXPECT_EQ(world.screens.observerCount(), 0u);
    session->end();
    EXPECT_EQ(display().current, usual);
}

TEST_F(ArrangeSessionTest, ARefusedRestoreIsTriedAgainAtEachChangeOfTheScreens) {
    scene.hide(items);
    beginAndStart();
    world.displays.answer = MemoryDisplays::Answer::refuses;
    session->end();
    world.displays.answer = MemoryDisplays::Answer::pretends;
    world.screens.change();
    EXPECT_EQ(world.displays.applyCount, 3);
    world.displays.answer = MemoryDisplays::Answer::switches;
    world.screens.change();
    EXPECT_EQ(display().current, usual);
    world.screens.change();
    EXPECT_EQ(world.displays.applyCount, 4);
}

TEST_F(ArrangeSessionTest, WhileARestoreIsAwaitedABeginCannotWiden) {
    scene.hide(items);
    beginAndStart();
    unplug();
    session->end();
    begin();
    world.time.runUntilIdle();
    EXPECT_EQ(results.back(), (BeginResult{Outcome::unavailable, refusedText}));
    EXPECT_EQ(display().current, usual);
    EXPECT_EQ(world.displays.applyCount, 1);
    EXPECT_FALSE(session->isActive());
}

TEST_F(ArrangeSessionTest, ABeginLeavesTheRestoreThatIsAwaitedToTheScreens) {
    scene.hide(items);
    beginAndStart();
    world.displays.answer = MemoryDisplays::Answer::refuses;
    session->end();
    world.displays.answer = MemoryDisplays::Answer::switches;
    begin();
    world.time.runUntilIdle();
    EXPECT_EQ(results.back(), (BeginResult{Outcome::unavailable, refusedText}));
    EXPECT_EQ(display().current, wide);
    EXPECT_EQ(world.displays.applyCount, 2);
    world.screens.change();
    EXPECT_EQ(display().current, usual);
}

TEST_F(ArrangeSessionTest, WhileARestoreIsAwaitedABeginMayNotBeNeeded) {
    scene.draw({items[0]});
    beginAndStart();
    unplug();
    session->end();
    scene.draw({items[1]});
    begin();
    world.time.runUntilIdle();
    EXPECT_EQ(outcomes().back(), Outcome::notNeeded);
    EXPECT_EQ(world.displays.applyCount, 1);
}

TEST_F(ArrangeSessionTest, WhileTheSessionIsActiveAChangeOfTheScreensUndoesNothing) {
    scene.hide(items);
    beginAndStart();
    world.screens.change();
    EXPECT_EQ(display().current, wide);
}

// Whether everything fits

TEST_F(ArrangeSessionTest, ItemsThatStillDoNotFitAreToldOnce1500MillisecondsAfterTheStart) {
    scene.hide(items);
    beginAndStart();
    world.time.advance(1499ms);
    EXPECT_EQ(warnings, 0);
    EXPECT_EQ(discoveryCount(), 0u);
    world.time.advance(1ms);
    EXPECT_EQ(warnings, 1);
    EXPECT_EQ(discoveryCount(), 1u);
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 1);
}

TEST_F(ArrangeSessionTest, WhenEverythingFitsNothingIsTold) {
    scene.draw({items[0]});
    beginAndStart();
    scene.draw({items[1]});
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 0);
    EXPECT_EQ(discoveryCount(), 2u);
}

TEST_F(ArrangeSessionTest, UndrawnSlotsAreToldThoughDiscoveryFindsNothing) {
    scene.hide(items);
    beginAndStart();
    scene.setItems(scene.launch(512, "Net"), {});
    world.time.runUntilIdle();
    EXPECT_TRUE(scene.discover().empty());
    EXPECT_EQ(warnings, 1);
}

TEST_F(ArrangeSessionTest, UndiscoveredSlotsAreToldThoughEverySlotIsDrawn) {
    scene.draw({items[0]});
    beginAndStart();
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 1);
}

TEST_F(ArrangeSessionTest, WithoutGeometryOnlyDiscoveryTells) {
    world.workspace.quit(MenuBarScene::agentPID);
    beginAndStart();
    world.workspace.quit(512);
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 0);
    session->end();
    items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    beginAndStart();
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 1);
}

TEST_F(ArrangeSessionTest, AnEndedSessionTellsNothing) {
    scene.hide(items);
    beginAndStart();
    world.time.advance(1499ms);
    session->end();
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 0);
    EXPECT_EQ(discoveryCount(), 0u);
}

TEST_F(ArrangeSessionTest, ASessionThatEndsDuringItsCheckTellsNothing) {
    scene.hide(items);
    world.accessibility.setLatency(512, 100ms);
    beginAndStart();
    world.time.happen(1550ms, [this] { session->end(); });
    world.time.runUntilIdle();
    EXPECT_EQ(discoveryCount(), 1u);
    EXPECT_EQ(warnings, 0);
}

TEST_F(ArrangeSessionTest, TheCheckOfAnEndedSessionTellsNothingAboutTheNextOne) {
    scene.hide(items);
    world.accessibility.setLatency(512, 100ms);
    beginAndStart();
    world.time.happen(1550ms, [this] {
        session->end();
        begin();
    });
    world.time.advance(2000ms);
    EXPECT_EQ(discoveryCount(), 1u);
    EXPECT_TRUE(session->isActive());
    EXPECT_EQ(warnings, 0);
    world.time.runUntilIdle();
    EXPECT_EQ(discoveryCount(), 2u);
    EXPECT_EQ(warnings, 1);
}

TEST_F(ArrangeSessionTest, WithoutAHandlerNobodyIsTold) {
    session->onItemsStillDoNotFit = {};
    scene.hide(items);
    beginAndStart();
    world.time.runUntilIdle();
    EXPECT_TRUE(session->isActive());
}

TEST_F(ArrangeSessionTest, TheHandlerMaySetAnotherOne) {
    session->onItemsStillDoNotFit = [this, mark = std::string(100, 'x')] {
        session->onItemsStillDoNotFit = {};
        warnings += static_cast<int>(mark.size());
    };
    scene.hide(items);
    beginAndStart();
    world.time.runUntilIdle();
    EXPECT_EQ(warnings, 100);
}

// A session that goes

TEST_F(ArrangeSessionTest, ASessionThatIsGoneReportsNothingAtAnyPoint) {
    scene.hide(items);
    for (const auto moment : {0ms, 1ms, 399ms, 400ms, 1899ms, 1900ms}) {
        session = ArrangeSession::create(platform, widener);
        int reports = 0;
        session->begin([&](const BeginResult&) { ++reports; });
        session->onItemsStillDoNotFit = [&] { reports += 10; };
        if (moment > 0ms) world.time.advance(moment);
        const int before = reports;
        session.reset();
        world.time.runUntilIdle();
        EXPECT_EQ(reports, before) << moment.count();
        EXPECT_TRUE(widener.restore());
        EXPECT_EQ(display().current, usual);
    }
}

TEST_F(ArrangeSessionTest, ASessionThatGoesStopsWatchingTheScreens) {
    scene.hide(items);
    beginAndStart();
    unplug();
    session->end();
    session.reset();
    EXPECT_EQ(world.screens.observerCount(), 0u);
}

TEST_F(ArrangeSessionTest, ACompletionMayDropTheSession) {
    scene.hide(items);
    int reports = 0;
    session->begin([&](const BeginResult&) {
        ++reports;
        session.reset();
    });
    world.time.runUntilIdle();
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(warnings, 0);
}

}  // namespace
}  // namespace ovin
