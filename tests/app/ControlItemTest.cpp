#include "app/ControlItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/app/AppTestWorld.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ControlItemTest : public testing::Test, protected AppTestWorld {
protected:
    const Platform platform = world.platform();
    DisplayWidener widener{platform};
    GuideWindow guide{platform};
    AboutWindow about{platform};
    std::shared_ptr<ItemsPanel> panel = ItemsPanel::create(platform);
    std::shared_ptr<ArrangeSession> arrange = ArrangeSession::create(platform, widener);
    Updater updater{platform};
    MemoryStatusBar& item = world.statusBar;
    std::shared_ptr<ControlItem> control = ControlItem::create(platform, {*panel, *arrange, updater, widener, guide, about});

    void leftClick() { item.click(StatusItemClick::leftMouseUp); }
    void rightClick() { item.click(StatusItemClick::rightMouseUp); }
    void choose(const std::string& title) {
        rightClick();
        item.choose(title);
    }
    /// Organizes until the card is shown.
    void organize() {
        control->startOrganizing();
        world.time.advance(1s);
        ASSERT_TRUE(isCardShown());
    }
    void clickCard(const std::string& title) {
        for (const PushButton& button : viewsOf<PushButton>(world.windows.floatingPanel()->content)) {
            if (button.title == title) world.windows.clickFloatingPanel(button.tag);
        }
    }
    [[nodiscard]] bool isOrganizing() const { return arrange->isActive(); }
    /// What a menu shows: title, key and mark of each entry; separators are empty.
    [[nodiscard]] static std::vector<std::string> linesOf(const Menu& menu) {
        std::vector<std::string> lines;
        for (const auto& entry : menu) {
            lines.push_back(entry ? entry->title + (entry->keyEquivalent.empty() ? "" : " [" + entry->keyEquivalent + "]") +
                                        (entry->isOn ? " ✓" : "")
                                  : "");
        }
        return lines;
    }
    [[nodiscard]] std::vector<std::string> menu() {
        rightClick();
        return linesOf(item.menu.value());
    }
    /// The last button of the open ledge.
    [[nodiscard]] Button lastButton() const { return viewsOf<Button>(world.windows.ledge()->content).back(); }
};

// The item

TEST_F(ControlItemTest, TheItemIsInTheBarUnderItsNameWithOvinsIcon) {
    EXPECT_EQ(item.itemCount, 1);
    EXPECT_EQ(item.autosaveName, "Ovin.Control");
    ASSERT_TRUE(item.image);
    EXPECT_EQ(item.accessibilityDescription, "Ovin");
}

TEST_F(ControlItemTest, WhileOrganizingTheItemShowsACheckMark) {
    organize();
    EXPECT_EQ(item.symbol, "checkmark.circle.fill");
    EXPECT_EQ(item.accessibilityDescription, "Done organizing");
    leftClick();
    EXPECT_EQ(item.symbol, "");
    EXPECT_EQ(item.accessibilityDescription, "Ovin");
}

TEST_F(ControlItemTest, WithoutTheSymbolTheItemKeepsOvinsIcon) {
    item.symbols.clear();
    organize();
    EXPECT_TRUE(item.image);
    EXPECT_EQ(item.accessibilityDescription, "Ovin");
}

TEST_F(ControlItemTest, AnItemWithoutAButtonOpensTheLedgeOnTheMainScreen) {
    item.hasButton = false;
    item.image.reset();
    item.itemScreen = Screen{{{2000, 0}, {800, 600}}, {{2000, 30}, {800, 570}}};
    organize();
    EXPECT_FALSE(item.image);
    EXPECT_EQ(item.symbol, "");
    leftClick();
    leftClick();
    ASSERT_TRUE(world.windows.ledge());
    const Rect frame = world.windows.ledge()->frame;
    EXPECT_EQ(frame.origin.x + frame.size.width, 1512 - 8);
}

// Clicks

TEST_F(ControlItemTest, ALeftClickOpensAndClosesTheLedgeOnTheItemsScreen) {
    item.itemScreen = Screen{{{2000, 0}, {800, 600}}, {{2000, 30}, {800, 570}}};
    leftClick();
    ASSERT_TRUE(world.windows.ledge());
    const Rect frame = world.windows.ledge()->frame;
    EXPECT_EQ(frame.origin.x + frame.size.width, 2792);
    EXPECT_EQ(frame.origin.y, 36);
    leftClick();
    EXPECT_FALSE(world.windows.ledge());
}

TEST_F(ControlItemTest, APressWithoutTheMouseIsALeftClick) {
    item.click(StatusItemClick::other);
    EXPECT_TRUE(panel->isOpen());
}

TEST_F(ControlItemTest, ARightClickClosesTheLedgeBeforeTheMenuShows) {
    leftClick();
    ASSERT_TRUE(panel->isOpen());
    int menus = 0;
    item.showingMenu = [&] {
        ++menus;
        EXPECT_FALSE(panel->isOpen());
        EXPECT_FALSE(world.windows.ledge());
    };
    rightClick();
    EXPECT_EQ(menus, 1);
}

// Where another process shows the bar, the monitor of other programs' clicks sees the press on Ovin's own item as well.

TEST_F(ControlItemTest, AClickWhosePressIsSeenAsOneOutsideClosesTheLedgeAndTheNextOneOpensIt) {
    const auto pressAndRelease = [&] {
        world.time.happen(0ms, [&] { world.events.press(); });
        world.time.happen(80ms, [&] { leftClick(); });
        world.time.advance(40ms);
        EXPECT_FALSE(panel->isOpen()) << "while the button is held down";
        world.time.advance(60ms);
    };
    leftClick();
    pressAndRelease();
    EXPECT_FALSE(panel->isOpen());
    pressAndRelease();
    EXPECT_TRUE(panel->isOpen());
}

TEST_F(ControlItemTest, AClickIsToldOfBeforeItsPressIsSeenAsOneOutsideAndClosesTheLedge) {
    leftClick();
    world.time.happen(0ms, [&] {
        world.events.press();
        leftClick();
    });
    world.time.advance(1ms);
    EXPECT_FALSE(panel->isOpen());
    leftClick();
    EXPECT_TRUE(panel->isOpen()) << "the late press has closed nothing";
}

TEST_F(ControlItemTest, ALeftClickWhileOrganizingFinishesAndDoesNotOpenTheLedge) {
    organize();
    leftClick();
    EXPECT_FALSE(isOrganizing());
    EXPECT_FALSE(isCardShown());
    EXPECT_FALSE(panel->isOpen());
    EXPECT_EQ(currentMode(), usualMode);
}

TEST_F(ControlItemTest, ALeftClickWhileOrganizingIsAboutToBeginOpensTheLedge) {
    control->startOrganizing();
    leftClick();
    EXPECT_TRUE(panel->isOpen());
}

TEST_F(ControlItemTest, OpeningTheLedgeFromOutsideLeavesAnOpenOneOpen) {
    control->perform(Command::showHiddenItems);
    EXPECT_TRUE(panel->isOpen());
    control->perform(Command::showHiddenItems);
    EXPECT_TRUE(panel->isOpen());
}

// The menu

TEST_F(ControlItemTest, AMenuThatTheBarOpensBeginsWithTheLedge) {
    ASSERT_TRUE(item.barMenu);
    Menu shown = item.barMenu();
    EXPECT_THAT(linesOf(shown), ElementsAre("Show Hidden Items", "", "Organize Menu Bar…", "How This Works", "",
                                            "Launch at Login", "", "About Ovin", "Check for Updates…", "Quit Ovin [q]"));
    shown.at(0)->action();
    EXPECT_TRUE(panel->isOpen());
    organize();
    EXPECT_EQ(linesOf(item.barMenu()).at(2), "Done Organizing");
}

TEST_F(ControlItemTest, WhereNoBarDrawsTheItemTheLedgeEndsWithTheMenu) {
    item.isDrawn = false;
    control->perform(Command::showHiddenItems);
    world.time.advance(1s);
    EXPECT_EQ(lastButton().toolTip, "Ovin");
    world.windows.click(lastButton().tag);
    EXPECT_FALSE(panel->isOpen());
    EXPECT_THAT(linesOf(item.menu.value()), SizeIs(8));
    item.choose("Quit Ovin");
    EXPECT_EQ(world.application.terminationCount, 1);
}

TEST_F(ControlItemTest, WhereABarDrawsTheItemTheLedgeHasItemsAlone) {
    control->perform(Command::showHiddenItems);
    world.time.advance(1s);
    EXPECT_THAT(viewsOf<Button>(world.windows.ledge()->content), SizeIs(1));
    EXPECT_NE(lastButton().toolTip, "Ovin");
}

TEST_F(ControlItemTest, WhatIsCommandedFromOutsideIsWhatTheMenuDoes) {
    control->perform(Command::organize);
    world.time.advance(1s);
    EXPECT_TRUE(isOrganizing());
    control->perform(Command::organize);
    EXPECT_FALSE(isOrganizing());
    control->perform(Command::launchAtLogin);
    EXPECT_EQ(menu().at(3), "Launch at Login ✓");
    control->perform(Command::about);
    EXPECT_THAT(windows(), SizeIs(1));
    control->perform(Command::howThisWorks);
    EXPECT_THAT(windows(), SizeIs(2));
    control->perform(Command::quit);
    EXPECT_EQ(world.application.terminationCount, 1);
}

TEST(Command, HasANameOutsideOfTheApplication) {
    for (const NamedCommand& named : namedCommands) EXPECT_EQ(commandNamed(named.name), named.command);
    EXPECT_EQ(commandNamed("other"), std::nullopt);
    EXPECT_EQ(commandNamed(""), std::nullopt);
}

TEST_F(ControlItemTest, TheMenuHasItsEntriesInOrder) {
    EXPECT_THAT(menu(), ElementsAre("Organize Menu Bar…", "How This Works", "", "Launch at Login", "", "About Ovin",
                                    "Check for Updates…", "Quit Ovin [q]"));
}

TEST_F(ControlItemTest, TheMenuIsBuiltAfreshAtEveryRightClick) {
    organize();
    world.launchAtLogin.current = LaunchAtLogin::Status::enabled;
    EXPECT_THAT(menu(), ElementsAre("Done Organizing", "How This Works", "", "Launch at Login ✓", "", "About Ovin",
                                    "Check for Updates…", "Quit Ovin [q]"));
    leftClick();
    EXPECT_EQ(menu().front(), "Organize Menu Bar…");
}

TEST_F(ControlItemTest, ChoosingDoneOrganizingFinishes) {
    organize();
    choose("Done Organizing");
    EXPECT_FALSE(isOrganizing());
    EXPECT_FALSE(isCardShown());
    EXPECT_EQ(currentMode(), usualMode);
}

TEST_F(ControlItemTest, QuitTerminatesTheApplication) {
    choose("Quit Ovin");
    EXPECT_EQ(world.application.terminationCount, 1);
}

TEST_F(ControlItemTest, AboutAndGuideShowTheirWindows) {
    choose("About Ovin");
    choose("How This Works");
    ASSERT_THAT(windows(), SizeIs(2));
    EXPECT_EQ(windows().at(0).title, "About Ovin");
    EXPECT_EQ(windows().at(1).title, "How Ovin Works");
}

TEST_F(ControlItemTest, CheckingForUpdatesAsksTheFramework) {
    choose("Check for Updates…");
    EXPECT_EQ(world.updates.checkCount, 1);
}

TEST_F(ControlItemTest, AnEntryThatIsChosenAfterTheItemIsGoneDoesNothing) {
    rightClick();
    const Menu menu = item.menu.value();
    control.reset();
    for (const auto& entry : menu) {
        if (entry) entry->action();
    }
    EXPECT_EQ(world.application.terminationCount, 0);
    EXPECT_THAT(windows(), IsEmpty());
    world.time.runUntilIdle();
    EXPECT_EQ(currentMode(), usualMode);
}

// The guide

TEST_F(ControlItemTest, TheGuidesButtonOrganizes) {
    control->perform(Command::howThisWorks);
    world.windows.click("How Ovin Works", viewsOf<PushButton>(windows().at(0).content).at(1).tag);
    world.time.advance(1s);
    EXPECT_TRUE(isOrganizing());
}

TEST_F(ControlItemTest, WhileOrganizingTheGuideHasNoButtonToStartIt) {
    organize();
    control->perform(Command::howThisWorks);
    EXPECT_THAT(viewsOf<PushButton>(windows().at(0).content), SizeIs(1));
}

TEST_F(ControlItemTest, AGuideFromBeforeOrganizingFinishesIt) {
    control->perform(Command::howThisWorks);
    const int organizeTag = viewsOf<PushButton>(windows().at(0).content).at(1).tag;
    organize();
    world.windows.click("How Ovin Works", organizeTag);
    EXPECT_FALSE(isOrganizing());
}

// Organizing

TEST_F(ControlItemTest, OrganizingWidensTheDisplayAndShowsTheCardAtItsScale) {
    choose("Organize Menu Bar…");
    world.time.advance(399ms);
    EXPECT_FALSE(isCardShown());
    world.time.advance(600ms);
    EXPECT_EQ(currentMode(), widerMode);
    ASSERT_TRUE(isCardShown());
    const double scale = 2048.0 / 1512;
    EXPECT_EQ(std::get<Stack>(world.windows.floatingPanel()->content.content).width, 440 * scale + 52 * scale);
    EXPECT_THAT(world.alerts.shown, IsEmpty());
}

TEST_F(ControlItemTest, DoneOnTheCardFinishes) {
    organize();
    clickCard("Done");
    EXPECT_FALSE(isOrganizing());
    EXPECT_FALSE(isCardShown());
    EXPECT_EQ(item.accessibilityDescription, "Ovin");
    EXPECT_EQ(currentMode(), usualMode);
}

TEST_F(ControlItemTest, ClosingTheCardFinishes) {
    organize();
    world.windows.closeFloatingPanel();
    EXPECT_FALSE(isOrganizing());
    EXPECT_FALSE(isCardShown());
    EXPECT_EQ(currentMode(), usualMode);
}

TEST_F(ControlItemTest, TheCardGoesBeforeTheDisplayChangesBackAndTheIconComesAfterwards) {
    organize();
    int switches = 0;
    world.displays.onEffect = [&](EffectMoment moment) {
        if (moment == EffectMoment::before) ++switches;
        EXPECT_FALSE(isCardShown());
        EXPECT_EQ(item.symbol, "checkmark.circle.fill");
    };
    leftClick();
    EXPECT_EQ(switches, 1);
    EXPECT_EQ(item.symbol, "");
}

TEST_F(ControlItemTest, AfterOrganizingTheLedgeIsReadAnew) {
    organize();
    world.time.runUntilIdle();
    world.process.setEnvironment("OVIN_DEBUG", "");
    const auto lines = world.log.lines().size();
    clickCard("Done");
    world.time.advance(1900ms);
    EXPECT_EQ(world.log.lines().size(), lines + 1);  // The display was restored.
    world.time.advance(200ms);
    EXPECT_GT(world.log.lines().size(), lines + 1);
}

TEST_F(ControlItemTest, ItemsThatStillDoNotFitAddAWarningToTheCard) {
    organize();
    const auto before = labelTexts(world.windows.floatingPanel()->content);
    world.time.advance(2s);
    const auto after = labelTexts(world.windows.floatingPanel()->content);
    EXPECT_EQ(after.size(), before.size() + 1);
}

TEST_F(ControlItemTest, StartingWhileOrganizingDoesNothing) {
    organize();
    control->startOrganizing();
    world.time.advance(1s);
    EXPECT_TRUE(isOrganizing());
    EXPECT_TRUE(isCardShown());
}

TEST_F(ControlItemTest, WhenEverythingFitsAnAlertSaysSo) {
    drawEverything();
    control->startOrganizing();
    world.time.runUntilIdle();
    EXPECT_THAT(world.alerts.shown,
                ElementsAre(Alert{"Everything already fits",
                                  "All of your menu bar items are drawn at this resolution. Hold ⌘ and drag them into the "
                                  "order you want."}));
    EXPECT_EQ(world.application.activationCount, 1);
    EXPECT_FALSE(isOrganizing());
    EXPECT_FALSE(isCardShown());
}

TEST_F(ControlItemTest, WhenTheDisplayCannotBeWidenedAnAlertSaysWhy) {
    world.displays.displays.front().isMirrored = true;
    control->startOrganizing();
    world.time.runUntilIdle();
    EXPECT_THAT(world.alerts.shown,
                ElementsAre(Alert{"Can’t widen this display",
                                  "Your displays are mirrored, and mirrored displays change resolution together. Turn "
                                  "mirroring off in System Settings → Displays, then try again."}));
    EXPECT_EQ(world.application.activationCount, 1);
    EXPECT_FALSE(isOrganizing());
}

TEST_F(ControlItemTest, TheApplicationComesForwardAndTheIconIsSetBeforeAnAlert) {
    drawEverything();
    control->startOrganizing();
    item.image.reset();
    int activations = 0;
    bool isIconSet = false;
    world.alerts.showing = [&] {
        activations = world.application.activationCount;
        isIconSet = item.image.has_value();
    };
    world.time.runUntilIdle();
    EXPECT_EQ(activations, 1);
    EXPECT_TRUE(isIconSet);
}

TEST_F(ControlItemTest, ASupersededBeginShowsNothingButRefreshesTheIcon) {
    control->startOrganizing();
    item.image.reset();
    control->startOrganizing();
    EXPECT_TRUE(item.image);
    EXPECT_THAT(world.alerts.shown, IsEmpty());
    EXPECT_EQ(world.application.activationCount, 0);
}

TEST_F(ControlItemTest, AResultThatComesAfterTheItemIsGoneShowsNothing) {
    world.displays.displays.front().isMirrored = true;
    control->startOrganizing();
    control.reset();
    world.time.runUntilIdle();
    EXPECT_THAT(world.alerts.shown, IsEmpty());
}

// Launch at login

TEST_F(ControlItemTest, LaunchAtLoginIsSwitchedOnAndOff) {
    choose("Launch at Login");
    EXPECT_EQ(world.launchAtLogin.current, LaunchAtLogin::Status::enabled);
    choose("Launch at Login");
    EXPECT_EQ(world.launchAtLogin.current, LaunchAtLogin::Status::notRegistered);
    EXPECT_THAT(world.log.lines(), IsEmpty());
}

TEST_F(ControlItemTest, LaunchAtLoginThatIsNotEnabledShowsOffAndIsRegisteredWhenChosen) {
    for (const auto status :
         {LaunchAtLogin::Status::notRegistered, LaunchAtLogin::Status::requiresApproval, LaunchAtLogin::Status::notFound}) {
        world.launchAtLogin.current = status;
        const int count = world.launchAtLogin.registrationCount;
        EXPECT_EQ(menu().at(3), "Launch at Login");
        item.choose("Launch at Login");
        EXPECT_EQ(world.launchAtLogin.registrationCount, count + 1);
    }
    EXPECT_EQ(world.launchAtLogin.unregistrationCount, 0);
}

TEST_F(ControlItemTest, AFailureToLaunchAtLoginIsLoggedAndNothingElse) {
    world.launchAtLogin.failure = "Operation not permitted";
    choose("Launch at Login");
    EXPECT_THAT(world.log.lines(), ElementsAre("Ovin: launch-at-login toggle failed: Operation not permitted"));
    EXPECT_THAT(world.alerts.shown, IsEmpty());
}

}  // namespace
}  // namespace ovin
