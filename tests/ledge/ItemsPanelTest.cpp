#include "ledge/ItemsPanel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ItemsPanelTest : public testing::Test {
protected:
    MenuBarScene scene;
    MemoryWorld& world = scene.world;
    std::shared_ptr<ItemsPanel> panel = ItemsPanel::create(world.platform());

    void SetUp() override { world.process.setEnvironment("OVIN_DEBUG", ""); }

    /// How many discoveries have run, by the lines that they log when they begin.
    [[nodiscard]] long discoveryCount() const {
        const auto lines = world.log.lines();
        return std::count_if(lines.begin(), lines.end(),
                             [](const std::string& line) { return line.starts_with("Ovin DEBUG AX"); });
    }

    void open() { panel->toggle(std::nullopt); }

    /// What the buttons of the open ledge are called, or the text in their place; nothing while it is closed.
    [[nodiscard]] std::vector<std::string> shown() const {
        std::vector<std::string> result;
        if (!world.windows.ledge()) return result;
        const View* view = std::get<MenuBackground>(world.windows.ledge()->content.content).content.get();
        if (const auto* scroll = std::get_if<ScrollView>(&view->content)) view = scroll->content.get();
        const View& inner = std::get<Stack>(view->content).views.at(0);
        if (const auto* label = std::get_if<Label>(&inner.content)) return {label->text.at(0).text};
        for (const View& button : std::get<Stack>(inner.content).views) {
            result.push_back(std::get<Button>(button.content).toolTip);
        }
        return result;
    }

    /// The ledge as it was with “Net — a”, to which “Battery — a” has come since. Each notes in `told` that it was asked for
    /// `action`.
    MemoryWindows::Ledge openAndLetOneCome(const std::string& action, std::vector<std::string>& told) {
        const auto launch = [&](ProcessID pid, const std::string& name) {
            scene.launchWithItems(pid, name, {"a"})[0].answerWith(action, [&told, name]() -> MemoryAnswer {
                told.push_back(name);
                return {};
            });
        };
        launch(512, "Net");
        world.time.runUntilIdle();
        open();
        auto before = *world.windows.ledge();
        launch(513, "Battery");
        world.time.runUntilIdle();
        EXPECT_THAT(shown(), ElementsAre("Battery — a", "Net — a"));
        return before;
    }
};

// Discovery

TEST_F(ItemsPanelTest, TheFirstDiscoveryRunsTwoSecondsAfterLaunch) {
    world.time.advance(1999ms);
    EXPECT_EQ(discoveryCount(), 0);
    world.time.advance(1ms);
    EXPECT_EQ(discoveryCount(), 1);
    world.time.runUntilIdle();
    EXPECT_EQ(discoveryCount(), 1);
}

TEST_F(ItemsPanelTest, ABurstOfLaunchesAndQuitsLeadsToOneDiscoveryTwoSecondsAfterTheLast) {
    for (ProcessID pid = 1; pid <= 200; ++pid) {
        scene.launchWithItems(pid, "App", {"t"});
        world.time.advance(10ms);
        if (pid % 2 == 0) world.workspace.quit(pid);
    }
    EXPECT_EQ(discoveryCount(), 0);
    world.time.advance(1999ms);
    EXPECT_EQ(discoveryCount(), 0);
    world.time.runUntilIdle();
    EXPECT_EQ(discoveryCount(), 1);
}

TEST_F(ItemsPanelTest, AnotherBarLeadsToADiscoveryTwoSecondsLater) {
    world.time.runUntilIdle();
    world.accessibility.barChanged();
    world.time.advance(1999ms);
    EXPECT_EQ(discoveryCount(), 1);
    world.time.advance(1ms);
    EXPECT_EQ(discoveryCount(), 2);
}

TEST_F(ItemsPanelTest, InvalidatingReadsTheListAgainTwoSecondsLater) {
    world.time.runUntilIdle();
    panel->invalidate();
    world.time.advance(2s);
    EXPECT_EQ(discoveryCount(), 2);
}

TEST_F(ItemsPanelTest, TenRequestsDuringADiscoveryLeadToOneMore) {
    scene.launchWithItems(512, "Slow", {"t"});
    world.accessibility.setLatency(512, 100ms);
    open();
    for (int i = 0; i < 10; ++i) {
        panel->close();
        panel->open(std::nullopt);
    }
    world.time.advance(1s);
    EXPECT_EQ(discoveryCount(), 2);
}

TEST_F(ItemsPanelTest, WithoutTrustNoDiscoveryStarts) {
    world.accessibility.setTrusted(false);
    world.time.runUntilIdle();
    EXPECT_EQ(discoveryCount(), 0);
}

TEST_F(ItemsPanelTest, ADiscoveryThatFindsTheLedgeGoneEndsQuietly) {
    scene.launchWithItems(512, "Net", {"t"});
    open();
    panel.reset();
    world.time.runUntilIdle();
    EXPECT_EQ(discoveryCount(), 1);
    EXPECT_FALSE(world.windows.ledge());
    EXPECT_EQ(world.events.monitorCount(), 0u);
}

// What is shown

TEST_F(ItemsPanelTest, BeforeAnyDiscoveryTheLedgeIsLoading) {
    open();
    EXPECT_THAT(shown(), ElementsAre("Loading…"));
}

TEST_F(ItemsPanelTest, AfterADiscoveryThatFoundNothingEverythingFits) {
    world.time.runUntilIdle();
    open();
    EXPECT_THAT(shown(), ElementsAre("Every item fits in the menu bar"));
}

TEST_F(ItemsPanelTest, AnOpenLedgeGoesOnLoadingUntilTheListChanges) {
    open();
    world.time.advance(1s);
    // The ledge is laid out again only when the list differs, and the list is still empty.
    EXPECT_THAT(shown(), ElementsAre("Loading…"));
}

TEST_F(ItemsPanelTest, TheLedgeOpensAtOnceWithTheLastListAndIsCorrectedAfterwards) {
    scene.launchWithItems(512, "Net", {"Wi-Fi"});
    world.time.runUntilIdle();
    scene.launchWithItems(513, "Sound", {"Volume"});
    open();
    EXPECT_THAT(shown(), ElementsAre("Net — Wi-Fi"));
    world.time.advance(100ms);
    EXPECT_THAT(shown(), ElementsAre("Net — Wi-Fi", "Sound — Volume"));
}

TEST_F(ItemsPanelTest, AHungApplicationDoesNotDelayTheOpening) {
    scene.launchWithItems(512, "Net", {"Wi-Fi"});
    world.time.runUntilIdle();
    world.accessibility.setHung(512, true);
    const auto before = world.time.now();
    open();
    EXPECT_THAT(shown(), ElementsAre("Net — Wi-Fi"));
    EXPECT_EQ(world.time.now(), before);
}

TEST_F(ItemsPanelTest, AnUnchangedListIsNotLaidOutAgain) {
    scene.launchWithItems(512, "Net", {"Wi-Fi"});
    world.time.runUntilIdle();
    open();
    world.time.runUntilIdle();
    EXPECT_EQ(world.windows.layoutCount(), 1);
}

TEST_F(ItemsPanelTest, AChangedListIsLaidOutInTheSamePanel) {
    const auto items = scene.launchWithItems(512, "Net", {"Wi-Fi"});
    world.time.runUntilIdle();
    open();
    items[0].set("AXTitle", {std::string("VPN")});
    world.time.runUntilIdle();
    EXPECT_THAT(shown(), ElementsAre("Net — VPN"));
    EXPECT_EQ(world.windows.layoutCount(), 2);
    EXPECT_EQ(world.windows.panelCount(), 1);
}

TEST_F(ItemsPanelTest, ADiscoveryThatEndsWhileTheLedgeIsClosedShowsNothing) {
    scene.launchWithItems(512, "Net", {"Wi-Fi"});
    open();
    panel->close();
    world.time.runUntilIdle();
    EXPECT_FALSE(world.windows.ledge());
    open();
    EXPECT_THAT(shown(), ElementsAre("Net — Wi-Fi"));
}

TEST_F(ItemsPanelTest, ARowWiderThanTheVisibleScreenLess40ScrollsAndIsExactlyThatWide) {
    scene.launchWithItems(512, "Many", std::vector<std::string>(500, "A title of some length"));
    world.time.runUntilIdle();
    open();
    const auto& ledge = *world.windows.ledge();
    EXPECT_EQ(ledge.frame.size.width, 1512 - 40);
    EXPECT_TRUE(std::holds_alternative<ScrollView>(std::get<MenuBackground>(ledge.content.content).content->content));
    EXPECT_THAT(shown(), SizeIs(500));
}

// Opening and closing

TEST_F(ItemsPanelTest, WithoutTrustOpeningAsksForItAndTheLedgeStaysClosed) {
    world.accessibility.setTrusted(false);
    open();
    EXPECT_EQ(world.accessibility.promptCount(), 1);
    EXPECT_FALSE(panel->isOpen());
    EXPECT_FALSE(world.windows.ledge());
}

TEST_F(ItemsPanelTest, TogglingClosesAnOpenLedge) {
    open();
    EXPECT_TRUE(panel->isOpen());
    open();
    EXPECT_FALSE(panel->isOpen());
    EXPECT_FALSE(world.windows.ledge());
}

TEST_F(ItemsPanelTest, ALedgeThatTheUserOrTheSystemPutsAwayIsClosed) {
    open();
    world.windows.dismissLedge();
    EXPECT_FALSE(panel->isOpen());
    EXPECT_FALSE(world.windows.ledge());
    EXPECT_EQ(world.events.monitorCount(), 0u);
    open();
    EXPECT_TRUE(world.windows.ledge());
}

TEST_F(ItemsPanelTest, TheLedgeStandsAtTheBarThatHasItsItem) {
    Screen screen{{{0, 0}, {1280, 800}}, {{0, 0}, {1280, 770}}};
    screen.bar = BarPlace{BarPlace::Edge::bottom, {{0, 770}, {1280, 30}}, {600, 785}};
    panel->open(screen);
    const Rect frame = world.windows.ledge()->frame;
    EXPECT_EQ(frame.origin.x + frame.size.width / 2, 600);
    EXPECT_EQ(frame.origin.y + frame.size.height, 770 - 6);
}

TEST_F(ItemsPanelTest, ThePanelHangsUnderTheMenuBarAtTheRightEdgeOfItsScreen) {
    panel->open(Screen{{{1512, 100}, {1000, 800}}, {{1512, 130}, {960, 700}}});
    const Rect frame = world.windows.ledge()->frame;
    EXPECT_EQ(frame.origin.x + frame.size.width, 2512 - 8);
    EXPECT_EQ(frame.origin.y, 130 + 6);
}

TEST_F(ItemsPanelTest, TheLedgeFollowsItsItemToAnotherDisplay) {
    const Screen left{{{0, 0}, {1512, 982}}, {{0, 37}, {1512, 945}}};
    const Screen right{{{1512, 100}, {1000, 800}}, {{1512, 124}, {1000, 776}}};
    const auto corner = [this](const Screen& screen) {
        panel->open(screen);
        const Rect frame = world.windows.ledge()->frame;
        panel->close();
        return Point{frame.origin.x + frame.size.width, frame.origin.y};
    };
    EXPECT_EQ(corner(left), (Point{1512 - 8, 37 + 6}));
    EXPECT_EQ(corner(right), (Point{2512 - 8, 124 + 6}));
    EXPECT_EQ(corner(left), (Point{1512 - 8, 37 + 6}));
}

TEST_F(ItemsPanelTest, WithoutAGivenScreenTheMainOneIsTaken) {
    open();
    const Rect frame = world.windows.ledge()->frame;
    EXPECT_EQ(frame.origin.x + frame.size.width, 1512 - 8);
    EXPECT_EQ(frame.origin.y, 37 + 6);
}

TEST_F(ItemsPanelTest, WithoutAnyScreenTheLedgeIsOpenAndInvisibleUntilTheNextToggle) {
    world.screens.mainScreen.reset();
    open();
    EXPECT_TRUE(panel->isOpen());
    EXPECT_FALSE(world.windows.ledge());
    EXPECT_EQ(world.events.monitorCount(), 0u);
    open();
    EXPECT_FALSE(panel->isOpen());
}

TEST_F(ItemsPanelTest, ClosingRemovesTheMonitorAndReopeningInstallsExactlyOne) {
    open();
    EXPECT_EQ(world.events.monitorCount(), 1u);
    panel->close();
    EXPECT_EQ(world.events.monitorCount(), 0u);
    open();
    world.time.runUntilIdle();
    EXPECT_EQ(world.events.monitorCount(), 1u);
    panel->close();
    panel->close();
    EXPECT_EQ(world.events.monitorCount(), 0u);
}

TEST_F(ItemsPanelTest, WhereNobodyMayListenToPressesTheLedgeOpensAndClosesByItsItem) {
    world.events.isAvailable = false;
    open();
    EXPECT_TRUE(world.windows.ledge());
    open();
    EXPECT_FALSE(world.windows.ledge());
    world.events.isAvailable = true;
    open();
    EXPECT_EQ(world.events.monitorCount(), 1u);
}

TEST_F(ItemsPanelTest, APressOutsideClosesTheLedge) {
    open();
    world.events.press();
    EXPECT_TRUE(panel->isOpen()) << "not within the monitor's own call";
    world.time.advance(0ms);
    EXPECT_FALSE(panel->isOpen());
}

TEST_F(ItemsPanelTest, ThePressThatClosedTheLedgeDoesNotReopenItAndTheNextClickDoes) {
    open();
    world.events.press();
    world.time.advance(499ms);
    open();
    EXPECT_FALSE(panel->isOpen());
    open();
    EXPECT_TRUE(panel->isOpen());
}

TEST_F(ItemsPanelTest, AClickHalfASecondAfterAPressOutsideOpensTheLedge) {
    open();
    world.events.press();
    world.time.advance(500ms);
    open();
    EXPECT_TRUE(panel->isOpen());
}

TEST_F(ItemsPanelTest, APressThatFindsTheLedgeClosedLeavesNoStamp) {
    open();
    world.events.press();
    panel->close();
    world.time.advance(1ms);
    open();
    EXPECT_TRUE(panel->isOpen());
}

// Clicks on items

TEST_F(ItemsPanelTest, AClickOnAnItemClosesTheLedgeAndThenPressesTheItem) {
    const auto items = scene.launchWithItems(512, "Net", {"a", "b"});
    std::vector<std::size_t> pressed;
    for (std::size_t index = 0; index < items.size(); ++index) {
        items[index].answerWith("AXPress", [this, &pressed, index]() -> MemoryAnswer {
            EXPECT_FALSE(panel->isOpen());
            pressed.push_back(index);
            return {};
        });
    }
    world.time.runUntilIdle();
    open();
    world.windows.click(1);
    EXPECT_FALSE(world.windows.ledge());
    EXPECT_THAT(pressed, IsEmpty()) << "away from the main thread";
    world.time.runUntilIdle();
    EXPECT_THAT(pressed, ElementsAre(1));
    EXPECT_EQ(world.application.beepCount, 0);
}

TEST_F(ItemsPanelTest, AnItemThatRefusesBeepsAndNothingElse) {
    scene.launchWithItems(512, "Net", {"a"});
    world.time.runUntilIdle();
    open();
    world.windows.click(0);
    world.time.runUntilIdle();
    EXPECT_EQ(world.application.beepCount, 1);
    EXPECT_FALSE(world.windows.ledge());
}

TEST_F(ItemsPanelTest, AnItemWhoseProgramDiedBetweenDrawingAndClickBeeps) {
    scene.launchWithItems(512, "Net", {"a"})[0].answer("AXPress", {});
    world.time.runUntilIdle();
    open();
    world.accessibility.quit(512);
    world.windows.click(0);
    world.time.runUntilIdle();
    EXPECT_EQ(world.application.beepCount, 1);
}

TEST_F(ItemsPanelTest, AClickThatIsOnItsWayWhenTheListChangesIsForTheItemThatWasShown) {
    std::vector<std::string> pressed;
    const auto before = openAndLetOneCome("AXPress", pressed);
    before.clicked(0);
    world.time.runUntilIdle();
    EXPECT_THAT(pressed, ElementsAre("Net"));
    before.clicked(0);
    world.time.runUntilIdle();
    EXPECT_THAT(pressed, ElementsAre("Net")) << "the ledge is closed";
}

TEST_F(ItemsPanelTest, ARightClickOnAnItemClosesTheLedgeAndThenShowsTheItemsMenu) {
    std::vector<std::string> performed;
    const auto items = scene.launchWithItems(512, "Net", {"a", "b"});
    items[1].answer("AXPress", {});
    items[1].answerWith("AXShowMenu", [this, &performed]() -> MemoryAnswer {
        EXPECT_FALSE(panel->isOpen());
        performed.push_back("menu of b");
        return {};
    });
    world.time.runUntilIdle();
    open();
    world.windows.rightClick(1);
    EXPECT_FALSE(world.windows.ledge());
    world.time.runUntilIdle();
    EXPECT_THAT(performed, ElementsAre("menu of b"));
    EXPECT_EQ(world.application.beepCount, 0);
}

TEST_F(ItemsPanelTest, ARightClickOnAnItemWithoutAMenuBeepsAndPressesNothing) {
    bool isPressed = false;
    scene.launchWithItems(512, "Net", {"a"})[0].answerWith("AXPress", [&isPressed]() -> MemoryAnswer {
        isPressed = true;
        return {};
    });
    world.time.runUntilIdle();
    open();
    world.windows.rightClick(0);
    world.time.runUntilIdle();
    EXPECT_EQ(world.application.beepCount, 1);
    EXPECT_FALSE(isPressed);
}

TEST_F(ItemsPanelTest, ARightClickThatIsOnItsWayWhenTheListChangesIsForTheItemThatWasShown) {
    std::vector<std::string> asked;
    const auto before = openAndLetOneCome("AXShowMenu", asked);
    before.menuRequested(0);
    world.time.runUntilIdle();
    EXPECT_THAT(asked, ElementsAre("Net"));
}

TEST_F(ItemsPanelTest, AClickWithATagOutOfRangeIsIgnored) {
    scene.launchWithItems(512, "Net", {"a"});
    world.time.runUntilIdle();
    open();
    world.windows.click(-1);
    world.windows.click(1);
    world.time.runUntilIdle();
    EXPECT_TRUE(panel->isOpen());
    EXPECT_EQ(world.application.beepCount, 0);
}

TEST_F(ItemsPanelTest, ClicksFasterThanTheLedgeOpensEndInTheStateOfTheLast) {
    scene.launchWithItems(512, "Slow", {"t"});
    world.accessibility.setLatency(512, 100ms);
    for (int i = 0; i < 101; ++i) open();
    EXPECT_TRUE(panel->isOpen());
    EXPECT_EQ(world.events.monitorCount(), 1u);
    world.time.advance(1500ms);
    EXPECT_EQ(discoveryCount(), 2);
    EXPECT_THAT(shown(), ElementsAre("Slow — t"));
}

}  // namespace
}  // namespace ovin
