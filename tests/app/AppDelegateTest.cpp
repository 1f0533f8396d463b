#include "app/AppDelegate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/app/AppTestWorld.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> earlierKeys{"OvinEngineState",
                                           "OvinVisibleSet",
                                           "OvinConcealMargin",
                                           "OvinRevealMargin",
                                           "OvinPendingTierReset",
                                           "OvinSpacerRotation",
                                           "OvinWidenDisplayWhileArranging"};

class AppDelegateTest : public testing::Test, protected AppTestWorld {
protected:
    std::unique_ptr<AppDelegate> delegate;

    void set(const std::string& name, const std::string& value = "") { world.process.setEnvironment(name, value); }
    void launch() {
        delegate = std::make_unique<AppDelegate>(world.platform());
        delegate->applicationDidFinishLaunching();
    }
    /// Checks that nothing but one window exists.
    void expectPreviewAlone() const {
        EXPECT_EQ(world.statusBar.itemCount, 0);
        EXPECT_EQ(world.updates.startCount, 0);
        EXPECT_TRUE(world.defaults.values.empty());
    }
    [[nodiscard]] double cardScale() const {
        return *std::get<Stack>(world.windows.floatingPanel()->content.content).width / 492;
    }
    [[nodiscard]] bool isOrganizing() const { return world.statusBar.accessibilityDescription == "Done organizing"; }
};

// Previews

TEST_F(AppDelegateTest, TheArrangeWindowPreviewTakesItsScaleFromTheVariable) {
    const std::vector<std::pair<std::string, double>> scales{
        {"1.5", 1.5}, {"2", 2},    {"1.25e0", 1.25}, {"abc", 1}, {"", 1},    {"1.5x", 1},
        {" 1.5", 1},  {"1.5 ", 1}, {"1,5", 1},       {"-3", 1},  {"9", 2.2}, {"1e999", 1},
        {"0x2", 1},   {"inf", 1},  {"nan", 1},       {"2e", 1},  {"+2", 2}};
    for (const auto& [value, scale] : scales) {
        set("OVIN_TEST_ARRANGE_WINDOW", value);
        launch();
        ASSERT_TRUE(isCardShown()) << value;
        EXPECT_DOUBLE_EQ(cardScale(), scale) << value;
        expectPreviewAlone();
    }
}

TEST_F(AppDelegateTest, TheArrangeWindowPreviewShowsTheWarningOnRequest) {
    set("OVIN_TEST_ARRANGE_WINDOW", "1");
    launch();
    const auto fitting = labelTexts(world.windows.floatingPanel()->content);
    set("OVIN_TEST_NOFIT");
    launch();
    EXPECT_EQ(labelTexts(world.windows.floatingPanel()->content).size(), fitting.size() + 1);
}

TEST_F(AppDelegateTest, TheArrangeWindowPreviewShowsTheCardExpandedOnRequest) {
    world.defaults.values["OvinArrangeCardCollapsed"] = true;
    set("OVIN_TEST_ARRANGE_WINDOW", "1");
    launch();
    const auto isExpanded = [this] {
        return viewsOf<DisclosureTriangle>(world.windows.floatingPanel()->content).at(0).isOn;
    };
    EXPECT_FALSE(isExpanded());
    set("OVIN_TEST_CARD");
    launch();
    EXPECT_TRUE(isExpanded());
    EXPECT_EQ(world.defaults.object("OvinArrangeCardCollapsed"), UserDefaults::Value(true));
}

TEST_F(AppDelegateTest, DoneInTheArrangeWindowPreviewQuits) {
    set("OVIN_TEST_ARRANGE_WINDOW", "1");
    launch();
    world.windows.clickFloatingPanel(viewsOf<PushButton>(world.windows.floatingPanel()->content).at(0).tag);
    EXPECT_EQ(world.application.terminationCount, 1);
}

TEST_F(AppDelegateTest, ThePreviewsExcludeEachOtherInTheirOrder) {
    set("OVIN_TEST_GUIDE");
    launch();
    ASSERT_THAT(windows(), SizeIs(1));
    EXPECT_EQ(windows().at(0).title, "How Ovin Works");
    expectPreviewAlone();

    set("OVIN_TEST_ABOUT");
    launch();
    ASSERT_THAT(windows(), SizeIs(1));
    EXPECT_EQ(windows().at(0).title, "About Ovin");
    expectPreviewAlone();

    set("OVIN_TEST_ARRANGE_WINDOW");
    launch();
    EXPECT_TRUE(isCardShown());
    EXPECT_THAT(windows(), IsEmpty());
    expectPreviewAlone();
}

TEST_F(AppDelegateTest, TheGuidePreviewsOrganizeButtonQuits) {
    set("OVIN_TEST_GUIDE");
    launch();
    const auto buttons = viewsOf<PushButton>(windows().at(0).content);
    ASSERT_THAT(buttons, SizeIs(2));
    world.windows.click("How Ovin Works", buttons.at(1).tag);
    EXPECT_EQ(world.application.terminationCount, 1);
    world.time.runUntilIdle();
    EXPECT_EQ(currentMode(), usualMode);
}

TEST_F(AppDelegateTest, QuittingInAPreviewDoesNothingExtra) {
    world.defaults.values["OvinOriginalDisplayModeID"] = std::int64_t{1};
    world.defaults.values["OvinOriginalDisplayID"] = std::int64_t{1};
    world.displays.displays.front().current = widerMode;
    set("OVIN_TEST_ABOUT");
    launch();
    delegate->applicationWillTerminate();
    EXPECT_EQ(currentMode(), widerMode);
}

TEST_F(AppDelegateTest, APreviewThatIsStartedASecondTimeBecomesTheApplication) {
    set("OVIN_TEST_ARRANGE_WINDOW");
    launch();
    delegate->openAgain();
    EXPECT_FALSE(isCardShown());
    EXPECT_EQ(world.statusBar.itemCount, 1);
    EXPECT_EQ(world.updates.startCount, 1);
    delegate->openAgain();
    EXPECT_TRUE(world.windows.ledge());
    EXPECT_EQ(world.updates.startCount, 1);
}

TEST_F(AppDelegateTest, TheGuideOfAPreviewThatBecameTheApplicationOrganizes) {
    set("OVIN_TEST_GUIDE");
    launch();
    world.defaults.values["OvinHasShownGuide"] = true;
    delegate->openAgain();
    world.windows.click("How Ovin Works", viewsOf<PushButton>(windows().at(0).content).at(1).tag);
    world.time.advance(1s);
    EXPECT_TRUE(isOrganizing());
    EXPECT_EQ(world.application.terminationCount, 0);
}

TEST_F(AppDelegateTest, TheVariablesOfPreviewsAreTold) {
    EXPECT_FALSE(AppDelegate::isPreview(world.process));
    for (const std::string name : {"OVIN_TEST_ARRANGE_WINDOW", "OVIN_TEST_ABOUT", "OVIN_TEST_GUIDE"}) {
        world.process.setEnvironment(name, "");
        EXPECT_TRUE(AppDelegate::isPreview(world.process)) << name;
        world.process.setEnvironment(name, std::nullopt);
    }
    set("OVIN_TEST_UPDATE");
    set("OVIN_TEST_ORGANIZE");
    EXPECT_FALSE(AppDelegate::isPreview(world.process));
}

// The normal start

TEST_F(AppDelegateTest, TheSettingsOfEarlierVersionsAreRemoved) {
    for (const std::string& key : earlierKeys) world.defaults.values[key] = std::string("old");
    world.defaults.values["Other"] = true;
    launch();
    for (const std::string& key : earlierKeys) EXPECT_FALSE(world.defaults.values.contains(key)) << key;
    EXPECT_TRUE(world.defaults.values.contains("Other"));
}

TEST_F(AppDelegateTest, WithoutSettingsOfEarlierVersionsNoneAppear) {
    launch();
    for (const std::string& key : earlierKeys) EXPECT_FALSE(world.defaults.values.contains(key)) << key;
}

TEST_F(AppDelegateTest, TheItemIsInTheBarAndUpdatesAreChecked) {
    launch();
    EXPECT_EQ(world.statusBar.itemCount, 1);
    EXPECT_EQ(world.updates.startCount, 1);
    EXPECT_EQ(world.updates.checkCount, 0);
}

TEST_F(AppDelegateTest, EveryValueOfASwitchSetsItAlsoOneThatSoundsLikeNo) {
    for (const std::string value : {"", "0", "no", "false", "off"}) {
        set("OVIN_TEST_ABOUT", value);
        launch();
        EXPECT_THAT(windows(), SizeIs(1)) << value;
        expectPreviewAlone();
        world.process.setEnvironment("OVIN_TEST_ABOUT", std::nullopt);

        const int checks = world.updates.checkCount;
        set("OVIN_TEST_UPDATE", value);
        launch();
        EXPECT_EQ(world.updates.checkCount, checks + 1) << value;
        world.process.setEnvironment("OVIN_TEST_UPDATE", std::nullopt);
        delegate.reset();
        world.updates.startCount = 0;
    }
}

TEST_F(AppDelegateTest, AnInterruptedWideningIsUndoneAtLaunch) {
    world.defaults.values["OvinOriginalDisplayModeID"] = std::int64_t{1};
    world.defaults.values["OvinOriginalDisplayID"] = std::int64_t{1};
    world.displays.displays.front().current = widerMode;
    launch();
    EXPECT_EQ(currentMode(), usualMode);
    EXPECT_FALSE(world.defaults.values.contains("OvinOriginalDisplayModeID"));
}

TEST_F(AppDelegateTest, AWideningIsUndoneOnceTheItemIsInTheBarAndUpdatesAreScheduledAndBeforeAnythingIsShown) {
    world.defaults.values["OvinEngineState"] = std::string("old");
    world.defaults.values["OvinOriginalDisplayModeID"] = std::int64_t{1};
    world.defaults.values["OvinOriginalDisplayID"] = std::int64_t{1};
    world.displays.displays.front().current = widerMode;
    world.displays.onEffect = [this](EffectMoment) {
        EXPECT_FALSE(world.defaults.values.contains("OvinEngineState"));
        EXPECT_EQ(world.statusBar.itemCount, 1);
        EXPECT_EQ(world.updates.startCount, 1);
        EXPECT_EQ(world.updates.checkCount, 0);
        EXPECT_THAT(windows(), IsEmpty());
    };
    set("OVIN_TEST_UPDATE");
    launch();
    EXPECT_EQ(currentMode(), usualMode);
    EXPECT_EQ(world.updates.checkCount, 1);
}

TEST_F(AppDelegateTest, TheGuideIsShownAtTheFirstLaunchOnly) {
    launch();
    ASSERT_THAT(windows(), SizeIs(1));
    EXPECT_EQ(windows().at(0).title, "How Ovin Works");
    EXPECT_EQ(world.defaults.object("OvinHasShownGuide"), UserDefaults::Value(true));
    delegate.reset();
    launch();
    EXPECT_THAT(windows(), IsEmpty());
}

TEST_F(AppDelegateTest, AGuideThatCrashesTheProgramIsNotShownAgain) {
    bool isOnRecord = false;
    world.defaults.onEffect = [&](EffectMoment) {
        if (isOnRecord || !world.defaults.values.contains("OvinHasShownGuide")) return;
        isOnRecord = true;
        EXPECT_THAT(windows(), IsEmpty());
    };
    launch();
    EXPECT_TRUE(isOnRecord);
    EXPECT_THAT(windows(), SizeIs(1));
}

TEST_F(AppDelegateTest, AGuideThatWasDeniedIsShown) {
    world.defaults.values["OvinHasShownGuide"] = false;
    launch();
    EXPECT_THAT(windows(), SizeIs(1));
}

TEST_F(AppDelegateTest, TheUpdatePreviewChecksAndLeavesEverythingElseAlone) {
    set("OVIN_TEST_UPDATE");
    set("OVIN_TEST_ORGANIZE");
    launch();
    world.time.runUntilIdle();
    EXPECT_EQ(world.updates.checkCount, 1);
    EXPECT_FALSE(isOrganizing());
    EXPECT_FALSE(world.defaults.values.contains("OvinHasShownGuide"));
    EXPECT_THAT(windows(), IsEmpty());
}

TEST_F(AppDelegateTest, TheOrganizePreviewOrganizesInPlaceOfTheGuide) {
    set("OVIN_TEST_ORGANIZE");
    launch();
    world.time.advance(1s);
    EXPECT_TRUE(isOrganizing());
    EXPECT_TRUE(isCardShown());
    EXPECT_FALSE(world.defaults.values.contains("OvinHasShownGuide"));
    EXPECT_THAT(windows(), IsEmpty());
}

TEST_F(AppDelegateTest, QuittingWhileOrganizingRestoresTheDisplay) {
    set("OVIN_TEST_ORGANIZE");
    launch();
    world.time.advance(1s);
    ASSERT_EQ(currentMode(), widerMode);
    delegate->applicationWillTerminate();
    EXPECT_EQ(currentMode(), usualMode);
}

TEST_F(AppDelegateTest, AStoreThatRefusesToChangeDoesNotStopTheLaunch) {
    world.defaults.refusesChanges = true;
    launch();
    EXPECT_EQ(world.statusBar.itemCount, 1);
    EXPECT_THAT(windows(), SizeIs(1));
}

TEST_F(AppDelegateTest, ASecondStartOpensTheLedgeOfTheFirst) {
    launch();
    delegate->openAgain();
    EXPECT_TRUE(world.windows.ledge());
}

}  // namespace
}  // namespace ovin
