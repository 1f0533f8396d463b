#include "discovery/MenuBarGeometry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using MenuBarGeometry::Entry;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Pair;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

class MenuBarGeometryTest : public testing::Test {
protected:
    MenuBarScene scene;
    MemoryAccessibility& accessibility = scene.world.accessibility;

    void SetUp() override { scene.launchAgent(); }

    /// Which of the slots, by their index, are drawn.
    std::vector<bool> drawn() {
        std::vector<bool> result;
        const auto snapshot = scene.snapshot();
        if (!snapshot)
            ADD_FAILURE() << "no snapshot";
        else
            for (const Entry& entry : snapshot->entries) result.push_back(entry.isDrawn);
        return result;
    }

    std::string framesLine() {
        scene.world.process.setEnvironment("OVIN_DEBUG_FRAMES", "");
        EXPECT_TRUE(scene.snapshot());
        const auto lines = scene.world.log.lines();
        return lines.empty() ? "no line" : lines.back();
    }

    /// A window with one slot whose width tells which window was chosen.
    MemoryElement windowWithSlot(double slotWidth, const std::optional<Rect>& frame) {
        const MemoryElement window = accessibility.makeElement(MenuBarScene::agentPID);
        if (frame) window.setFrame(*frame);
        const MemoryElement slot = accessibility.makeElement(MenuBarScene::agentPID);
        slot.setFrame({{0, 0}, {slotWidth, 24}});
        window.setChildren({slot});
        return window;
    }

    /// The index of the window that is chosen among windows with these frames.
    int chosen(const std::vector<std::optional<Rect>>& frames) {
        std::vector<MemoryElement> windows;
        for (const auto& frame : frames) windows.push_back(windowWithSlot(static_cast<double>(windows.size() + 1), frame));
        scene.setWindows(windows);
        const auto snapshot = scene.snapshot();
        return snapshot ? static_cast<int>(snapshot->totalItemsWidth()) - 1 : -1;
    }
};

// Availability

TEST_F(MenuBarGeometryTest, WithoutTrustThereIsNoSnapshotAndNothingIsAsked) {
    accessibility.setTrusted(false);
    int requests = 0;
    accessibility.observeRequests([&](const MemoryRequest&) { ++requests; });
    EXPECT_FALSE(scene.snapshot());
    EXPECT_EQ(requests, 0);
}

TEST_F(MenuBarGeometryTest, WithoutAnAgentThereIsNoSnapshot) {
    scene.world.workspace.quit(MenuBarScene::agentPID);
    EXPECT_FALSE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, AnAgentFoundByItsNameAloneIsUsed) {
    scene.world.workspace.quit(MenuBarScene::agentPID);
    scene.world.workspace.launch({MenuBarScene::agentPID, {}, "MenuBarAgent", {}, {}});
    EXPECT_TRUE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, AnAgentWithAnotherBundleIdentifierIsFoundByItsName) {
    scene.world.workspace.quit(MenuBarScene::agentPID);
    scene.world.workspace.launch({MenuBarScene::agentPID, "com.example.bar", "MenuBarAgent", {}, {}});
    EXPECT_TRUE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, AnAgentWithAnotherNameIsFoundByItsBundleIdentifier) {
    scene.world.workspace.quit(MenuBarScene::agentPID);
    scene.world.workspace.launch({MenuBarScene::agentPID, "com.apple.MenuBarAgent", "Barre des menus", {}, {}});
    EXPECT_TRUE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, TheNameOfTheAgentIsCaseSensitive) {
    scene.world.workspace.quit(MenuBarScene::agentPID);
    scene.world.workspace.launch({MenuBarScene::agentPID, "com.apple.menubaragent", "menubaragent", {}, {}});
    EXPECT_FALSE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, TheFirstMatchingApplicationIsTheAgent) {
    MenuBarScene other;
    other.launch(5, "MenuBarAgent");
    other.launchAgent();
    other.addSlot(0, 10);
    EXPECT_FALSE(other.snapshot()) << "process 5 comes first and has no windows";
}

TEST_F(MenuBarGeometryTest, AnAgentWithoutReadableWindowsGivesNoSnapshot) {
    scene.agent().fail("AXWindows", AccessibilityError::cannotComplete);
    EXPECT_FALSE(scene.snapshot());
    scene.setWindows({});
    EXPECT_FALSE(scene.snapshot());
    scene.agent().set("AXWindows", {std::string("windows")});
    EXPECT_FALSE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, AWindowWithoutReadableChildrenGivesNoSnapshot) {
    scene.window().fail("AXChildren", AccessibilityError::noValue);
    EXPECT_FALSE(scene.snapshot());
}

TEST_F(MenuBarGeometryTest, AWindowWithoutChildrenGivesAnEmptySnapshot) {
    const auto snapshot = scene.snapshot();
    ASSERT_TRUE(snapshot);
    EXPECT_THAT(snapshot->entries, IsEmpty());
    EXPECT_TRUE(snapshot->everythingIsDrawn());
    EXPECT_EQ(snapshot->totalItemsWidth(), 0);
    EXPECT_THAT(snapshot->drawnCountsByPID(), IsEmpty());
}

// The choice of the window

TEST_F(MenuBarGeometryTest, ASingleWindowIsChosenWithoutAFrame) { EXPECT_EQ(chosen({std::nullopt}), 0); }

TEST_F(MenuBarGeometryTest, OfAreas0And500And500TheSecondWindowIsChosen) {
    EXPECT_EQ(chosen({Rect{{-500, 0}, {100, 24}}, Rect{{0, 0}, {50, 10}}, Rect{{100, 0}, {50, 10}}}), 1);
}

TEST_F(MenuBarGeometryTest, TheWidestVisiblePartWins) {
    EXPECT_EQ(chosen({Rect{{0, 0}, {100, 24}}, Rect{{-1000, 0}, {1090, 24}}, Rect{{10, 0}, {101, 24}}}), 2);
}

TEST_F(MenuBarGeometryTest, AWindowOffTheMainDisplayIsChosenOnlyWhenItIsFirstAndNoneScoresMore) {
    const Rect elsewhere{{5000, 0}, {1000, 24}};
    EXPECT_EQ(chosen({elsewhere, elsewhere}), 0);
    EXPECT_EQ(chosen({elsewhere, Rect{{0, 0}, {1, 1}}}), 1);
    EXPECT_EQ(chosen({Rect{{0, 0}, {1, 1}}, elsewhere}), 0);
}

TEST_F(MenuBarGeometryTest, AWindowLessThanAPointHighScoresItsWidth) {
    EXPECT_EQ(chosen({Rect{{0, 0}, {99, 1}}, Rect{{0, 0}, {100, 0.5}}}), 1);
    EXPECT_EQ(chosen({Rect{{0, 0}, {100, 1}}, Rect{{0, 0}, {100, 0.5}}}), 0);
}

TEST_F(MenuBarGeometryTest, AWindowWithoutAFrameScoresNothing) {
    EXPECT_EQ(chosen({std::nullopt, Rect{{0, 0}, {1, 1}}}), 1);
    EXPECT_EQ(chosen({Rect{{0, 0}, {1, 1}}, std::nullopt}), 0);
    EXPECT_EQ(chosen({std::nullopt, std::nullopt}), 0);
}

TEST_F(MenuBarGeometryTest, AWindowWhoseFrameIsNotANumberScoresNothing) {
    const Rect nowhere{{notANumber, 0}, {100, 24}};
    EXPECT_EQ(chosen({Rect{{0, 0}, {1, 1}}, nowhere}), 0);
    EXPECT_EQ(chosen({Rect{{0, 0}, {1, 1}}, Rect{{0, 0}, {infinity, notANumber}}}), 0);
    EXPECT_EQ(chosen({nowhere, Rect{{5000, 0}, {100, 24}}}), 0);
    EXPECT_EQ(chosen({nowhere, Rect{{0, 0}, {1, 1}}}), 1);
}

TEST_F(MenuBarGeometryTest, AWindowThatOnlyTouchesTheDisplayScoresItsSharedEdge) {
    const Rect below{{0, 982}, {1512, 24}};
    const Rect beside{{1512, 0}, {1512, 24}};
    EXPECT_EQ(chosen({std::nullopt, below}), 1);
    EXPECT_EQ(chosen({std::nullopt, beside}), 0);
    EXPECT_EQ(chosen({below, Rect{{0, 0}, {1512, 24}}}), 1);
}

TEST_F(MenuBarGeometryTest, ANegativeWindowSizeIsNormalised) {
    EXPECT_EQ(chosen({Rect{{0, 0}, {10, 10}}, Rect{{500, 24}, {-500, -24}}}), 1);
}

TEST_F(MenuBarGeometryTest, TheMainDisplayIsTheOneThatCounts) {
    scene.world.displays.displays = {{9, {{0, 0}, {100, 100}}}, {8, {{100, 0}, {4000, 2000}}}};
    EXPECT_EQ(chosen({Rect{{100, 0}, {4000, 24}}, Rect{{0, 0}, {100, 24}}}), 1);
}

// Slots and owners

TEST_F(MenuBarGeometryTest, ASlotCarriesTheFrameOfTheSlotAndTheElementOfItsOwner) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    items[0].setFrame({{1, 1}, {1, 1}});
    scene.addSlot(Rect{{900, 0}, {31.5, 24}}, items[0]);
    const auto snapshot = scene.snapshot();
    ASSERT_TRUE(snapshot);
    ASSERT_EQ(snapshot->entries.size(), 1u);
    const Entry& entry = snapshot->entries[0];
    EXPECT_EQ(entry.owner, 512);
    EXPECT_EQ(entry.element, items[0].element());
    EXPECT_EQ(entry.frame, (Rect{{900, 0}, {31.5, 24}}));
    EXPECT_TRUE(entry.isDrawn);
}

TEST_F(MenuBarGeometryTest, EntriesKeepTheOrderOfTheChildren) {
    scene.addSlot(300, 10);
    scene.addSlot(100, 11);
    scene.addSlot(200, 12);
    EXPECT_THAT(scene.snapshot()->entries,
                ElementsAre(Field(&Entry::frame, Rect{{300, 0}, {10, 24}}), Field(&Entry::frame, Rect{{100, 0}, {11, 24}}),
                            Field(&Entry::frame, Rect{{200, 0}, {12, 24}})));
}

TEST_F(MenuBarGeometryTest, ASlotThatIsItselfForeignIsItsOwnOwner) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    items[0].setFrame({{10, 0}, {20, 24}});
    scene.window().setChildren({items[0]});
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::element, items[0].element())));
}

TEST_F(MenuBarGeometryTest, AGrandchildOfTheSlotIsFound) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    const MemoryElement group = accessibility.makeElement(MenuBarScene::agentPID);
    group.setChildren({items[0]});
    scene.addSlot(0, 20, group);
    EXPECT_THAT(scene.snapshot()->entries,
                ElementsAre(AllOf(Field(&Entry::owner, 512), Field(&Entry::element, items[0].element()))));
}

TEST_F(MenuBarGeometryTest, AGreatGrandchildIsNotFoundAndTheSlotStaysUnowned) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    const MemoryElement inner = accessibility.makeElement(MenuBarScene::agentPID);
    inner.setChildren({items[0]});
    const MemoryElement outer = accessibility.makeElement(MenuBarScene::agentPID);
    outer.setChildren({inner});
    scene.addSlot(0, 20, outer);
    EXPECT_THAT(scene.snapshot()->entries,
                ElementsAre(AllOf(Field(&Entry::owner, std::nullopt), Field(&Entry::element, std::nullopt))));
}

TEST_F(MenuBarGeometryTest, TheFirstForeignElementDepthFirstIsTheOwner) {
    const auto deep = scene.launchWithItems(512, "Deep", {"deep"});
    const auto flat = scene.launchWithItems(513, "Flat", {"flat"});
    const MemoryElement group = accessibility.makeElement(MenuBarScene::agentPID);
    group.setChildren({deep[0]});
    const MemoryElement slot = scene.addSlot(0, 20);
    slot.setChildren({group, flat[0]});
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::owner, 512)));
}

TEST_F(MenuBarGeometryTest, AnElementWithoutAKnownOwnerIsSearchedBelow) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    const MemoryElement slot = scene.addSlot(0, 20, items[0]);
    accessibility.hideOwner(slot);
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::owner, 512)));
    accessibility.hideOwner(items[0]);
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(Field(&Entry::owner, std::nullopt)));
}

TEST_F(MenuBarGeometryTest, TheDescriptionComesBeforeTheTitle) {
    const auto items = scene.launchWithItems(512, "Net", {"title"});
    scene.addSlot(0, 20, items[0]);
    items[0].set("AXDescription", {std::string("description")});
    EXPECT_THAT(scene.snapshotWithTitles()->entries, ElementsAre(Field(&Entry::title, "description")));
    items[0].set("AXDescription", {std::string()});
    EXPECT_THAT(scene.snapshotWithTitles()->entries, ElementsAre(Field(&Entry::title, "title")));
    items[0].set("AXDescription", {Point{}});
    EXPECT_THAT(scene.snapshotWithTitles()->entries, ElementsAre(Field(&Entry::title, "title")));
    items[0].fail("AXTitle", AccessibilityError::noValue);
    EXPECT_THAT(scene.snapshotWithTitles()->entries, ElementsAre(Field(&Entry::title, "")));
}

TEST_F(MenuBarGeometryTest, ASlotWithoutAFrameIsLeftOut) {
    scene.addSlot(0, 20).fail("AXSize", AccessibilityError::noValue);
    EXPECT_THAT(scene.snapshot()->entries, IsEmpty());
}

TEST_F(MenuBarGeometryTest, ASlotWithoutAWidthIsLeftOutAndHidesNothing) {
    scene.addSlot(10, 20);
    for (const double width : {0.0, -20.0, notANumber}) scene.addSlot(15, width);
    const auto snapshot = scene.snapshot();
    EXPECT_THAT(snapshot->entries,
                ElementsAre(AllOf(Field(&Entry::isDrawn, true), Field(&Entry::frame, Rect{{10, 0}, {20, 24}}))));
}

// Drawn or not

TEST_F(MenuBarGeometryTest, TwoSlotsWithTheSameFrameAreBothUndrawn) {
    scene.addSlot(10, 20);
    scene.addSlot(10, 20);
    EXPECT_THAT(drawn(), ElementsAre(false, false));
}

TEST_F(MenuBarGeometryTest, AnOverlapOfExactlyAPointIsDrawn) {
    scene.addSlot(10, 20);
    scene.addSlot(29, 20);
    EXPECT_THAT(drawn(), ElementsAre(true, true));
}

TEST_F(MenuBarGeometryTest, AnOverlapOfAPointAndAHalfIsUndrawnOnBothSides) {
    scene.addSlot(10, 20);
    scene.addSlot(28.5, 20);
    scene.addSlot(60, 20);
    EXPECT_THAT(drawn(), ElementsAre(false, false, true));
}

TEST_F(MenuBarGeometryTest, SlotsThatTouchAreDrawn) {
    scene.addSlot(10, 20);
    scene.addSlot(30, 20);
    EXPECT_THAT(drawn(), ElementsAre(true, true));
}

TEST_F(MenuBarGeometryTest, SlotsAboveOneAnotherAreDrawnUnlessTheyMeet) {
    scene.addSlot(Rect{{10, 0}, {20, 24}});
    scene.addSlot(Rect{{10, 25}, {20, 24}});
    EXPECT_THAT(drawn(), ElementsAre(true, true));
    scene.addSlot(Rect{{10, 49}, {20, 24}});
    EXPECT_THAT(drawn(), ElementsAre(true, false, false)) << "an edge in common is 20 points wide";
}

TEST_F(MenuBarGeometryTest, ASlotWithoutAnOwnerHidesAnother) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    scene.addSlot(10, 20, items[0]);
    scene.addSlot(15, 20);
    EXPECT_THAT(drawn(), ElementsAre(false, false));
}

TEST_F(MenuBarGeometryTest, FramesThatAreNoNumbersNeitherCrashNorHide) {
    scene.addSlot(10, 20);
    scene.addSlot(notANumber, 20);
    scene.addSlot(Rect{{10, notANumber}, {20, 24}});
    scene.addSlot(Rect{{10, 0}, {20, notANumber}});
    EXPECT_THAT(drawn(), ElementsAre(true, true, true, true));
    scene.addSlot(-infinity, infinity);
    scene.addSlot(0, infinity);
    EXPECT_EQ(drawn()[0], false);
}

/// The rule itself: no other slot has more than a point in common with this one, horizontally.
std::vector<bool> drawnByComparingAll(const std::vector<Rect>& frames) {
    std::vector<bool> result(frames.size(), true);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        for (std::size_t other = 0; other < frames.size(); ++other) {
            const auto common = intersection(frames[other], frames[i]);
            if (other != i && common && common->size.width > 1) result[i] = false;
        }
    }
    return result;
}

TEST_F(MenuBarGeometryTest, InRandomBarsTheSameSlotsAreDrawnAsWhenAllAreCompared) {
    std::mt19937 random(1);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same bars each time
    const auto oneOf = [&random](const std::vector<double>& values) {
        return values[std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(random)];
    };
    const double next = std::nextafter(1.0, 2.0);
    const std::vector<double> lefts{0,  1,  next, 1.5, 2,     2.5,       3,        10,        11,
                                    12, -5, 0.1,  0.3, 1e300, -infinity, infinity, notANumber};
    const std::vector<double> widths{0.5, 1, next, 1.1, 1.5, 2, 3, 9, 12, 1e300, infinity};
    const std::vector<double> tops{0, 0, 0, 0, 10, 24, -infinity, notANumber};
    const std::vector<double> heights{24, 24, 24, 24, 0, -24, 10, infinity, notANumber};
    int undrawn = 0;
    for (int bar = 0; bar < 3000; ++bar) {
        // Some bars have hardly anything but usual slots.
        const bool isUsual = bar % 2 == 0;
        std::vector<Rect> frames(std::uniform_int_distribution<std::size_t>(0, 12)(random));
        for (Rect& frame : frames) {
            frame = {
                {isUsual ? oneOf({0, 3, 10, 20, 21, 30, 40, 58.5, 60, 70, 80}) : oneOf(lefts), isUsual ? 0 : oneOf(tops)},
                {isUsual ? oneOf({1, 9, 10, 11, 12, 20}) : oneOf(widths), isUsual ? 24 : oneOf(heights)}};
        }
        std::vector<MemoryElement> slots;
        for (const Rect& frame : frames) {
            slots.push_back(accessibility.makeElement(MenuBarScene::agentPID));
            slots.back().setFrame(frame);
        }
        scene.window().setChildren(slots);
        const std::vector<bool> expected = drawnByComparingAll(frames);
        ASSERT_EQ(drawn(), expected) << "bar " << bar;
        undrawn += static_cast<int>(std::count(expected.begin(), expected.end(), false));
    }
    EXPECT_GT(undrawn, 3000);
}

// What a snapshot tells

TEST_F(MenuBarGeometryTest, OwnAndUnownedSlotsAreNotForeign) {
    const ProcessID own = scene.world.process.pid;
    const auto ownItems = scene.launchWithItems(own, "Ovin", {"own"});
    const auto items = scene.launchWithItems(512, "Net", {"a", "b"});
    scene.addSlot(10, 20, items[1]);
    scene.addSlot(30, 20, ownItems[0]);
    scene.addSlot(50, 20);
    scene.addSlot(70, 20, items[0]);
    EXPECT_THAT(scene.snapshot()->foreign(),
                ElementsAre(Field(&Entry::element, items[1].element()), Field(&Entry::element, items[0].element())));
}

TEST_F(MenuBarGeometryTest, EverythingIsDrawnWhenOnlyOwnOrUnownedSlotsAreNot) {
    const auto ownItems = scene.launchWithItems(scene.world.process.pid, "Ovin", {"own"});
    const auto items = scene.launchWithItems(512, "Net", {"a"});
    scene.addSlot(10, 20, ownItems[0]);
    scene.addSlot(10, 20);
    scene.addSlot(50, 20, items[0]);
    EXPECT_TRUE(scene.snapshot()->everythingIsDrawn());
    scene.addSlot(50, 20);
    EXPECT_FALSE(scene.snapshot()->everythingIsDrawn());
}

TEST_F(MenuBarGeometryTest, TheTotalWidthCountsOwnAndUnownedSlotsToo) {
    const auto ownItems = scene.launchWithItems(scene.world.process.pid, "Ovin", {"own"});
    scene.addSlot(10, 20.5, ownItems[0]);
    scene.addSlot(10, 30);
    EXPECT_DOUBLE_EQ(scene.snapshot()->totalItemsWidth(), 50.5);
}

TEST_F(MenuBarGeometryTest, DrawnCountsAreByProcess) {
    const auto first = scene.launchWithItems(512, "First", {"a", "b", "c"});
    const auto second = scene.launchWithItems(513, "Second", {"d"});
    scene.draw({first[0], first[1]});
    scene.hide({first[2], second[0]});
    EXPECT_THAT(scene.snapshot()->drawnCountsByPID(), ElementsAre(Pair(512, 2)));
}

TEST_F(MenuBarGeometryTest, WithAllForeignSlotsUndrawnThereAreNoDrawnCounts) {
    scene.hide(scene.launchWithItems(512, "Net", {"a", "b"}));
    EXPECT_THAT(scene.snapshot()->drawnCountsByPID(), IsEmpty());
}

// Timeouts

TEST_F(MenuBarGeometryTest, EveryRequestOfASnapshotRunsUnderHalfASecond) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    const MemoryElement group = accessibility.makeElement(MenuBarScene::agentPID);
    group.setChildren({items[0]});
    scene.addSlot(0, 20, group);
    scene.setWindows({scene.window(), windowWithSlot(1, Rect{{0, 0}, {0, 0}}), windowWithSlot(1, std::nullopt)});

    std::vector<MemoryRequest> requests;
    accessibility.observeRequests([&](const MemoryRequest& request) { requests.push_back(request); });
    EXPECT_TRUE(scene.snapshotWithTitles());
    EXPECT_GT(requests.size(), 10u);
    for (const MemoryRequest& request : requests) {
        EXPECT_EQ(request.timeout, 500ms) << request.name;
        // The search for an owner and its titles run under the timeout of the slot; everything else has its own timeout.
        const bool isBelowSlot = request.element == group || request.element == items[0];
        EXPECT_EQ(request.wasGivenTimeout, !isBelowSlot) << request.name;
    }
}

TEST_F(MenuBarGeometryTest, RequestsAreSentInTheOrderOfTheSlots) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    const MemoryElement owned = scene.addSlot(0, 20, items[0]);
    const MemoryElement unowned = scene.addSlot(30, 20);

    std::vector<std::pair<MemoryElement, std::string>> asked;
    accessibility.observeRequests([&](const MemoryRequest& request) { asked.emplace_back(request.element, request.name); });
    EXPECT_TRUE(scene.snapshot());
    EXPECT_THAT(asked, ElementsAre(Pair(scene.agent(), "AXWindows"), Pair(scene.window(), "AXChildren"),
                                   Pair(owned, "AXPosition"), Pair(owned, "AXSize"), Pair(owned, "AXChildren"),
                                   Pair(unowned, "AXPosition"), Pair(unowned, "AXSize"), Pair(unowned, "AXChildren")));
}

TEST_F(MenuBarGeometryTest, BothWindowsAreScoredAfreshAtEachComparison) {
    const MemoryElement first = windowWithSlot(1, Rect{{0, 0}, {50, 24}});
    const MemoryElement second = windowWithSlot(2, Rect{{0, 0}, {60, 24}});
    const MemoryElement third = windowWithSlot(3, std::nullopt);
    scene.setWindows({first, second, third});
    std::vector<std::pair<MemoryElement, std::string>> asked;
    accessibility.observeRequests([&](const MemoryRequest& request) { asked.emplace_back(request.element, request.name); });
    EXPECT_EQ(scene.snapshot()->totalItemsWidth(), 2);
    asked.resize(9, {scene.agent(), "none"});
    EXPECT_THAT(asked, ElementsAre(Pair(scene.agent(), "AXWindows"), Pair(first, "AXPosition"), Pair(first, "AXSize"),
                                   Pair(second, "AXPosition"), Pair(second, "AXSize"), Pair(second, "AXPosition"),
                                   Pair(second, "AXSize"), Pair(third, "AXPosition"), Pair(second, "AXChildren")));
}

TEST_F(MenuBarGeometryTest, TheOnlyWindowHasATimeoutOfItsOwn) {
    bool wasGivenTimeout = false;
    accessibility.observeRequests([&](const MemoryRequest& request) {
        if (request.element == scene.window()) wasGivenTimeout = request.wasGivenTimeout;
    });
    EXPECT_TRUE(scene.snapshot());
    EXPECT_TRUE(wasGivenTimeout);
}

TEST_F(MenuBarGeometryTest, AnAgentThatStopsAnsweringIsNoGeometryAndCostsASecondMore) {
    for (int i = 0; i < 40; ++i) scene.addSlot(i * 30, 30).fail("AXChildren", AccessibilityError::noValue);
    int reads = 0;
    accessibility.observeRequests([&](const MemoryRequest& request) {
        if (request.name == "AXPosition" && ++reads == 3) accessibility.setHung(MenuBarScene::agentPID, true);
    });
    EXPECT_FALSE(scene.snapshot());
    EXPECT_EQ(scene.world.time.now(), 1s);
}

TEST_F(MenuBarGeometryTest, AnAgentThatStopsAnsweringWhileItsWindowsAreComparedCostsASecondMore) {
    std::vector<MemoryElement> windows;
    for (int i = 0; i < 4; ++i) windows.push_back(windowWithSlot(1, Rect{{0, 0}, {100, 24}}));
    scene.setWindows(windows);
    accessibility.observeRequests([&](const MemoryRequest& request) {
        if (request.name == "AXPosition") accessibility.setHung(MenuBarScene::agentPID, true);
    });
    EXPECT_FALSE(scene.snapshot());
    EXPECT_EQ(scene.world.time.now(), 1s);
}

TEST_F(MenuBarGeometryTest, OneLostAnswerLeavesOutOneSlot) {
    for (int i = 0; i < 6; ++i) {
        const auto slot = scene.addSlot(i * 30, 30);
        if (i == 1) slot.answer("AXPosition", {{}, AccessibilityError::success, 0ms, true});
    }
    const auto snapshot = scene.snapshot();
    ASSERT_TRUE(snapshot);
    EXPECT_EQ(snapshot->entries.size(), 5u);
    EXPECT_EQ(snapshot->totalItemsWidth(), 150);
    EXPECT_EQ(scene.world.time.now(), 500ms);
}

TEST_F(MenuBarGeometryTest, AnAgentThatAnswersSlowlyIsHeardToTheEnd) {
    scene.addSlot(0, 0);
    for (int i = 1; i < 5; ++i) scene.addSlot(i * 30, 30);
    for (const auto latency : {250ms, 499ms}) {
        accessibility.setLatency(MenuBarScene::agentPID, latency);
        ASSERT_TRUE(scene.snapshot());
        EXPECT_EQ(scene.snapshot()->entries.size(), 4u) << latency.count();
    }
}

TEST_F(MenuBarGeometryTest, ASlotWithoutAFrameDoesNotEndTheReading) {
    scene.addSlot(0, 20).fail("AXSize", AccessibilityError::noValue);
    scene.addSlot(30, 20);
    EXPECT_EQ(scene.snapshot()->entries.size(), 1u);
}

TEST_F(MenuBarGeometryTest, AHungAgentCostsHalfASecond) {
    accessibility.setHung(MenuBarScene::agentPID, true);
    EXPECT_FALSE(scene.snapshot());
    EXPECT_EQ(scene.world.time.now(), 500ms);
}

TEST_F(MenuBarGeometryTest, AnOwnerThatDoesNotAnswerLeavesTheTitleEmpty) {
    scene.draw(scene.launchWithItems(512, "Net", {"Wi-Fi"}));
    accessibility.setHung(512, true);
    EXPECT_THAT(scene.snapshotWithTitles()->entries,
                ElementsAre(AllOf(Field(&Entry::owner, 512), Field(&Entry::title, ""))));
    EXPECT_EQ(scene.world.time.now(), 1s);
}

TEST_F(MenuBarGeometryTest, ASnapshotAsksNoOwner) {
    scene.draw(scene.launchWithItems(512, "Net", {"Wi-Fi"}));
    accessibility.setHung(512, true);
    EXPECT_THAT(scene.snapshot()->entries, ElementsAre(AllOf(Field(&Entry::owner, 512), Field(&Entry::title, ""))));
    EXPECT_EQ(scene.world.time.now(), 0s);
}

TEST_F(MenuBarGeometryTest, TitlesAreReadForTheDrawnItemsOfSomeOwners) {
    const auto net = scene.launchWithItems(512, "Net", {"drawn", "hidden"});
    scene.draw({net[0]});
    scene.hide({net[1]});
    scene.draw(scene.launchWithItems(513, "Sound", {"Volume"}));
    auto snapshot = scene.snapshot();
    MenuBarGeometry::readDrawnTitles(scene.world.platform(), *snapshot, {512, 999});
    EXPECT_THAT(snapshot->entries, ElementsAre(Field(&Entry::title, "drawn"), Field(&Entry::title, ""),
                                               Field(&Entry::title, ""), Field(&Entry::title, "")));
}

// The frames in the log

TEST_F(MenuBarGeometryTest, FramesAreLoggedOnlyOnRequest) {
    scene.addSlot(10, 20);
    EXPECT_TRUE(scene.snapshot());
    EXPECT_THAT(scene.world.log.lines(), IsEmpty());
}

TEST_F(MenuBarGeometryTest, FramesAreLoggedFromLeftToRightTruncatedTowardZero) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    scene.addSlot(900.9, 31.9, items[0]);
    scene.addSlot(-0.9, 10.5);
    scene.addSlot(-12.7, 10);
    EXPECT_EQ(framesLine(), "Ovin DEBUG frames: agent@-12+10 agent@0+10 Net@900+31");
}

TEST_F(MenuBarGeometryTest, SlotsAtOneXAreLoggedInListOrder) {
    std::string expected = "Ovin DEBUG frames:";
    for (int width = 1; width <= 40; ++width) {
        scene.addSlot(5, width);
        expected += " agent@5+" + std::to_string(width);
    }
    EXPECT_EQ(framesLine(), expected);
}

TEST_F(MenuBarGeometryTest, AnOwnerWithoutANameOrNotRunningIsLoggedAsAgent) {
    const auto nameless = scene.launchWithItems(512, "Net", {"a"});
    scene.world.workspace.quit(512);
    scene.addSlot(0, 10, nameless[0]);
    EXPECT_EQ(framesLine(), "Ovin DEBUG frames: agent@0+10");
    scene.world.workspace.launch({512, "com.example.net", {}, {}, {}});
    EXPECT_EQ(framesLine(), "Ovin DEBUG frames: agent@0+10");
}

TEST_F(MenuBarGeometryTest, AnEmptyBarIsLoggedWithAnEmptyText) { EXPECT_EQ(framesLine(), "Ovin DEBUG frames: "); }

TEST_F(MenuBarGeometryTest, FramesOutOfEveryRangeAreLoggedAllTheSame) {
    scene.addSlot(notANumber, 1);
    scene.addSlot(0x1p63, 2);
    scene.addSlot(-infinity, 1e300);
    EXPECT_EQ(framesLine(),
              "Ovin DEBUG frames: agent@-4611686018427387904+4611686018427387904 agent@4611686018427387904+2 "
              "agent@4611686018427387904+1");
}

}  // namespace
}  // namespace ovin
