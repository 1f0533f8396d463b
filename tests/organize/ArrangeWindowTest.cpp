#include "organize/ArrangeWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/memory/MemoryWorld.h"

namespace ovin {
namespace {

using Value = UserDefaults::Value;
using Floating = MemoryWindows::Floating;

constexpr const char* collapsedKey = "OvinArrangeCardCollapsed";
constexpr int disclosure = static_cast<int>(ArrangeButton::disclosure);
constexpr int label = static_cast<int>(ArrangeButton::howDoesThisWork);
constexpr int done = static_cast<int>(ArrangeButton::done);

class ArrangeWindowTest : public testing::Test {
protected:
    MemoryWorld world;
    int doneCount = 0;
    std::unique_ptr<ArrangeWindow> window = std::make_unique<ArrangeWindow>(world.platform(), [this] { ++doneCount; });

    [[nodiscard]] Floating panel() const { return world.windows.floatingPanel().value(); }
    [[nodiscard]] bool isShown() const { return world.windows.floatingPanel() && panel().isShown; }
    [[nodiscard]] static const Stack& stack(const Floating& panel) { return std::get<Stack>(panel.content.content); }

    /// What the content ought to be.
    [[nodiscard]] View content(double scale, bool isExpanded, bool hasWarning) const {
        return arrangeView(world.resources.words(),
                           {scale, isExpanded, hasWarning, world.resources.picture("explainer-collapsed"),
                            world.resources.picture("explainer-expanded")});
    }
    void expectShown(double scale, bool isExpanded, bool hasWarning) const {
        ASSERT_TRUE(isShown());
        const View expected = content(scale, isExpanded, hasWarning);
        EXPECT_EQ(panel().content, expected);
        EXPECT_EQ(panel().size, world.windows.fittingSize(expected));
    }
};

// Showing

TEST_F(ArrangeWindowTest, ItIsHiddenUntilItIsShown) {
    EXPECT_FALSE(world.windows.floatingPanel());
    window->show(1.3, true);
    expectShown(1.3, true, false);
    EXPECT_EQ(panel().title, "Organize your menu bar");
}

TEST_F(ArrangeWindowTest, ItGrowsWithTheDisplayWithinBounds) {
    for (const auto& [scale, shown] : {std::pair{1.0, 1.0}, {1.3, 1.3}, {2.2, 2.2}, {3.0, 2.2}, {0.5, 1.0}, {-1.0, 1.0}}) {
        window->show(scale, true);
        expectShown(shown, true, false);
        EXPECT_DOUBLE_EQ(panel().size.width, 492 * shown);
        EXPECT_DOUBLE_EQ(panel().origin.value().y, 37 + 60 * shown);
    }
}

TEST_F(ArrangeWindowTest, TheOneBeforeIsGoneWhenItIsShownAnew) {
    window->show(1.3, true);
    window->show(1.5, true);
    expectShown(1.5, true, false);
    EXPECT_FALSE(world.windows.hadTwoFloatingPanels());
}

TEST_F(ArrangeWindowTest, AScaleThatIsNoNumberIsTheUsualOne) {
    window->show(std::numeric_limits<double>::quiet_NaN(), true);
    expectShown(1, true, false);
}

TEST_F(ArrangeWindowTest, ItStandsInTheMiddleBelowTheTopOfWhatTheUserSees) {
    world.screens.mainScreen = Screen{{{-2000, -300}, {2000, 1200}}, {{-1900, -250}, {1800, 1000}}};
    window->show(2, true);
    EXPECT_EQ(panel().origin, (Point{-1900 + (1800 - 984) / 2.0, -250 + 120}));
}

TEST_F(ArrangeWindowTest, WithoutAScreenTheSystemPlacesIt) {
    world.screens.mainScreen.reset();
    window->show(1, true);
    EXPECT_TRUE(isShown());
    EXPECT_EQ(panel().origin, std::nullopt);
}

TEST_F(ArrangeWindowTest, ShowingAgainBuildsItAnew) {
    window->show(1.3, false);
    world.windows.clickFloatingPanel(label);
    world.windows.moveFloatingPanel({1, 1});
    ASSERT_TRUE(world.defaults.remove(collapsedKey));
    window->show(2, true);
    expectShown(2, true, false);
    EXPECT_EQ(panel().replaceCount, 0);
    EXPECT_EQ(panel().origin.value().y, 37 + 120);
    EXPECT_EQ(doneCount, 0);
}

TEST_F(ArrangeWindowTest, MissingPicturesAreLeftOut) {
    world.resources.pictures.erase("explainer-expanded");
    window->show(1, true);
    expectShown(1, true, false);
    EXPECT_EQ(std::get<Stack>(stack(panel()).views.at(3).content).views.size(), 4u);
}

// The warning

TEST_F(ArrangeWindowTest, TheWarningComesAfterTitleAndIntroductionOnce) {
    window->show(1.3, true);
    EXPECT_EQ(stack(panel()).views.size(), 6u);
    window->addFitWarning();
    expectShown(1.3, true, true);
    ASSERT_EQ(stack(panel()).views.size(), 7u);
    EXPECT_EQ(std::get<Label>(stack(panel()).views.at(2).content).text.at(0).color, Color{SystemColor::systemOrange});
    window->addFitWarning();
    EXPECT_EQ(stack(panel()).views.size(), 7u);
    EXPECT_EQ(panel().replaceCount, 1);
}

TEST_F(ArrangeWindowTest, AWindowThatIsShownWithTheWarningGetsNoSecondOne) {
    window->show(1.3, false);
    expectShown(1.3, true, true);
    window->addFitWarning();
    EXPECT_EQ(panel().replaceCount, 0);
}

TEST_F(ArrangeWindowTest, AHiddenWindowGetsNoWarning) {
    window->addFitWarning();
    window->show(1, true);
    expectShown(1, true, false);
    window->close();
    window->addFitWarning();
    EXPECT_FALSE(world.windows.floatingPanel());
    window->show(1, true);
    expectShown(1, true, false);
}

TEST_F(ArrangeWindowTest, TheTopEdgeStaysWhenTheContentGrowsAlsoWhereTheUserHasMovedIt) {
    window->show(1.3, true);
    const Size before = panel().size;
    world.windows.moveFloatingPanel({100, 200});
    window->addFitWarning();
    EXPECT_EQ(panel().origin, (Point{100, 200}));
    EXPECT_GT(panel().size.height, before.height);
    world.windows.clickFloatingPanel(disclosure);
    EXPECT_EQ(panel().origin, (Point{100, 200}));
    EXPECT_LT(panel().size.height, before.height);
}

// The card

TEST_F(ArrangeWindowTest, TheTriangleAndItsLabelCollapseAndExpandTheCard) {
    for (const int tag : {disclosure, label}) {
        ASSERT_TRUE(world.defaults.remove(collapsedKey));
        window->show(1.3, true);
        world.windows.clickFloatingPanel(tag);
        expectShown(1.3, false, false);
        EXPECT_EQ(world.defaults.object(collapsedKey), Value(true));
        world.windows.clickFloatingPanel(tag);
        expectShown(1.3, true, false);
        EXPECT_EQ(world.defaults.object(collapsedKey), Value(false));
    }
    EXPECT_EQ(doneCount, 0);
}

TEST_F(ArrangeWindowTest, ACollapsedCardIsCollapsedAfterARestart) {
    window->show(1, true);
    world.windows.clickFloatingPanel(label);
    window.reset();
    ArrangeWindow later(world.platform(), [] {});
    later.show(1, true);
    expectShown(1, false, false);
}

TEST_F(ArrangeWindowTest, ACollapsedCardStaysCollapsedWhenTheWarningComes) {
    world.defaults.values[collapsedKey] = true;
    window->show(1, true);
    window->addFitWarning();
    expectShown(1, false, true);
}

TEST_F(ArrangeWindowTest, APreferenceOfAnotherTypeCountsAsItsBoolean) {
    for (const auto& [value, isExpanded] : {std::pair<Value, bool>{std::string("YES"), false},
                                            {std::int64_t{2}, false},
                                            {std::string("no"), true},
                                            {0.0, true}}) {
        world.defaults.values[collapsedKey] = value;
        window->show(1, true);
        expectShown(1, isExpanded, false);
    }
}

TEST_F(ArrangeWindowTest, APreferenceThatCannotBeKeptHoldsForTheShowing) {
    world.defaults.refusesChanges = true;
    window->show(1, true);
    world.windows.clickFloatingPanel(label);
    expectShown(1, false, false);
    EXPECT_EQ(world.defaults.object(collapsedKey), std::nullopt);
}

TEST_F(ArrangeWindowTest, ExpandingTheCardKeepsThePreference) {
    for (const std::optional<Value>& value : {std::optional<Value>(true), std::optional<Value>(false),
                                              std::optional<Value>(std::string("YES")), std::optional<Value>()}) {
        world.defaults.values.clear();
        if (value) world.defaults.values[collapsedKey] = *value;
        window->show(1, true);
        window->expandCard();
        expectShown(1, true, false);
        EXPECT_EQ(world.defaults.object(collapsedKey), value);
    }
}

TEST_F(ArrangeWindowTest, AHiddenWindowIsNotExpanded) {
    world.defaults.values[collapsedKey] = true;
    window->expandCard();
    EXPECT_FALSE(world.windows.floatingPanel());
    EXPECT_EQ(world.defaults.object(collapsedKey), Value(true));
    window->show(1, true);
    expectShown(1, false, false);
}

// Ending

TEST_F(ArrangeWindowTest, DoneOnlyTells) {
    window->show(1, true);
    world.windows.clickFloatingPanel(done);
    EXPECT_EQ(doneCount, 1);
    EXPECT_TRUE(isShown());
}

TEST_F(ArrangeWindowTest, OtherTagsMeanNothing) {
    window->show(1, true);
    for (const int tag : {-1, 0, 4, 1000}) world.windows.clickFloatingPanel(tag);
    EXPECT_EQ(doneCount, 0);
    EXPECT_EQ(panel().replaceCount, 0);
}

TEST_F(ArrangeWindowTest, TheCloseButtonHidesAndTells) {
    window->show(1, true);
    world.windows.closeFloatingPanel();
    EXPECT_EQ(doneCount, 1);
    EXPECT_FALSE(world.windows.floatingPanel());
    window->addFitWarning();
    window->expandCard();
    EXPECT_FALSE(world.windows.floatingPanel());
    window->show(1, true);
    expectShown(1, true, false);
}

TEST_F(ArrangeWindowTest, ClosingTellsNothing) {
    window->close();
    window->show(1, true);
    window->close();
    window->close();
    EXPECT_EQ(doneCount, 0);
    EXPECT_FALSE(world.windows.floatingPanel());
}

TEST_F(ArrangeWindowTest, WhoIsToldMayCloseShowOrDestroyTheWindow) {
    const auto inEachWay = [this](const std::function<void()>& whenDone, const std::function<void()>& byUser) {
        // What the handler holds must live until it returns.
        window = std::make_unique<ArrangeWindow>(world.platform(), [this, whenDone, mark = std::string(100, 'x')] {
            whenDone();
            doneCount += static_cast<int>(mark.size());
        });
        window->show(1, true);
        byUser();
    };
    const auto clickDone = [this] { world.windows.clickFloatingPanel(done); };
    const auto closeIt = [this] { world.windows.closeFloatingPanel(); };
    for (const std::function<void()>& byUser : {std::function<void()>(clickDone), std::function<void()>(closeIt)}) {
        doneCount = 0;
        inEachWay([this] { window->close(); }, byUser);
        EXPECT_FALSE(world.windows.floatingPanel());
        inEachWay([this] { window->show(2, false); }, byUser);
        expectShown(2, true, true);
        inEachWay([this] { window.reset(); }, byUser);
        EXPECT_FALSE(world.windows.floatingPanel());
        EXPECT_EQ(doneCount, 300);
    }
}

}  // namespace
}  // namespace ovin
