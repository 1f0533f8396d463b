#include "info/GuideWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "info/GuidePage.h"
#include "platform/memory/MemoryWorld.h"
#include "tests/support/ViewSearch.h"

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::string guideTitle = "How Ovin Works";
constexpr int doneTag = static_cast<int>(GuideButton::done);
constexpr int organizeTag = static_cast<int>(GuideButton::organize);

class GuideWindowTest : public testing::Test {
protected:
    MemoryWorld world;
    GuideWindow guide{world.platform()};
    int organizeCount = 0;

    void show(bool isOrganizing = false) {
        guide.show(isOrganizing, [this] { ++organizeCount; });
    }
    [[nodiscard]] MemoryWindows::Information window() const {
        const auto windows = world.windows.informationWindows();
        EXPECT_THAT(windows, SizeIs(1));
        return windows.at(0);
    }
    [[nodiscard]] Stack column() const { return std::get<Stack>(window().content.content); }
    [[nodiscard]] ScrollView scroll() const { return std::get<ScrollView>(column().views.at(2).content); }
    [[nodiscard]] Stack page() const { return std::get<Stack>(scroll().content->content); }
};

TEST_F(GuideWindowTest, ThePageSaysEverythingInItsOrder) {
    show();
    EXPECT_THAT(
        labelTexts(*scroll().content),
        ElementsAre(
            "Your menu bar is full.",
            "macOS 27 draws as many menu bar icons as it can fit, starting from the clock, and tucks the rest behind a "
            "little « on the left.",
            "Collapsed: only the icons that fit.",
            "Click the « and the extras appear over your app’s menus, as many as your screen has room for.",
            "Expanded: the rest, if there’s space. Often there isn’t.",
            "With enough icons, some are left over entirely. They’re still running; you just can’t see them, click them, or "
            "drag them anywhere. Rather like a sock behind the radiator.",
            "Why Ovin doesn’t hide or move icons.",
            "Menu bar managers used to shuffle icons about behind the scenes, hiding some and promoting others. In macOS "
            "27, "
            "Apple rebuilt the menu bar, and those tricks no longer work reliably.",
            "We’d rather not promise what macOS won’t let us keep. So Ovin does the two things that do work, and does them "
            "properly.",
            "The ledge.",
            "Click Ovin’s icon and every icon macOS couldn’t fit lines up in a row underneath the menu bar. Click one and "
            "its menu opens, as if it had been in the bar all along.",
            "Click Ovin again, or anywhere else, to put the ledge away.", "Deciding who gets the good seats.",
            "macOS keeps the icons nearest the clock and lets the leftmost ones spill over, so the order of your icons "
            "decides which stay in view. You’d normally ⌘-drag them into order, but you can’t drag what you can’t see. So:",
            "1. Choose Organize Menu Bar… from Ovin’s menu. Ovin switches your display to a higher resolution, which gives "
            "the menu bar room to draw every icon. Everything gets smaller for a moment. That’s expected, and temporary.",
            "2. Hold ⌘ and drag your favourites towards the clock. Drag the ones you can live without to the left.",
            "3. Click Done. Your usual resolution comes back, and your new order stays put. Anything that still doesn’t fit "
            "is waiting on the ledge.",
            "Good manners.",
            "Ovin needs one permission, Accessibility, to find the icons macOS isn’t drawing and to open their menus for "
            "you. It doesn’t record your screen, never moves or clicks anything on its own, and collects nothing about you. "
            "Once a day it checks ovin.example for a newer version, and asks before installing one.",
            "If Ovin is interrupted while organizing, it puts your resolution back the next time it opens.",
            "Control-click Ovin’s icon for its menu. This page lives there too, under How This Works."));
}

TEST_F(GuideWindowTest, ParagraphsAreSizedAsTextCaptionsAndHeadings) {
    show();
    const auto labels = viewsOf<Label>(*scroll().content);
    const auto hasFont = [](const Label& label, const Font& font, SystemColor color) {
        return label.text.front().font == font && label.text.front().color == Color{color};
    };
    EXPECT_TRUE(hasFont(labels.at(0), {17, Font::Weight::bold}, SystemColor::label));
    EXPECT_FALSE(labels.at(0).wrapWidth);
    EXPECT_TRUE(hasFont(labels.at(1), {14, Font::Weight::regular}, SystemColor::label));
    EXPECT_EQ(labels.at(1).wrapWidth, 416);
    EXPECT_EQ(labels.at(1).lineSpacing, 3);
    EXPECT_TRUE(hasFont(labels.at(2), {12, Font::Weight::regular}, SystemColor::secondaryLabel));
    EXPECT_EQ(labels.at(2).wrapWidth, 416);
    EXPECT_TRUE(hasFont(labels.back(), {12, Font::Weight::regular}, SystemColor::secondaryLabel));
}

TEST_F(GuideWindowTest, OnlyTheFirstHeadingHasNoGapAboveIt) {
    show();
    std::vector<double> heights;
    for (const Spacer& spacer : viewsOf<Spacer>(*scroll().content)) heights.push_back(spacer.height);
    EXPECT_THAT(heights, ElementsAre(0, 12, 12, 12, 12, 8));
}

TEST_F(GuideWindowTest, PicturesKeepTheirProportions) {
    world.resources.pictures["explainer-collapsed"] = {832, 100};
    world.resources.pictures["explainer-expanded"] = {208, 50};
    show();
    const auto images = viewsOf<ImageView>(*scroll().content);
    ASSERT_THAT(images, SizeIs(2));
    EXPECT_EQ(images.at(0).size, (Size{416, 50}));
    EXPECT_EQ(images.at(1).size, (Size{416, 100}));
    EXPECT_EQ(images.at(0).cornerRadius, 6);
    EXPECT_EQ(MemoryImage::nameOf(images.at(0).image), "explainer-collapsed");
    EXPECT_EQ(MemoryImage::nameOf(images.at(1).image), "explainer-expanded");
}

TEST_F(GuideWindowTest, AMissingPictureLeavesItsCaptionInPlaceAndThePageOtherwiseUnchanged) {
    show();
    std::vector<View> expected = page().views;
    std::erase_if(expected, [](const View& view) {
        const auto* image = std::get_if<ImageView>(&view.content);
        return image != nullptr && MemoryImage::nameOf(image->image) == "explainer-collapsed";
    });
    world.resources.pictures.erase("explainer-collapsed");
    show();
    EXPECT_TRUE(page().views == expected);
}

TEST_F(GuideWindowTest, APictureWithoutWidthIsMissing) {
    world.resources.pictures["explainer-expanded"] = {0, 50};
    show();
    EXPECT_THAT(viewsOf<ImageView>(*scroll().content), SizeIs(1));
}

TEST_F(GuideWindowTest, ThePageIsLaidOutAsAColumn) {
    show();
    EXPECT_EQ(page().orientation, Stack::Orientation::vertical);
    EXPECT_EQ(page().alignment, Stack::Alignment::leading);
    EXPECT_EQ(page().spacing, 10);
    EXPECT_EQ(page().insets, (Insets{4, 32, 24, 32}));
    EXPECT_EQ(page().width, 480);
}

TEST_F(GuideWindowTest, TheWindowHasHeaderPageAndButtons) {
    show();
    EXPECT_EQ(window().title, "How Ovin Works");
    EXPECT_EQ(window().size, world.windows.fittingSize(window().content));
    EXPECT_EQ(column().alignment, Stack::Alignment::center);
    EXPECT_EQ(column().spacing, 0);
    EXPECT_EQ(column().insets, (Insets{30, 0, 18, 0}));
    ASSERT_THAT(column().views, SizeIs(5));
    const auto gap = [this](std::size_t index) { return column().views.at(index).spacingAfter; };
    EXPECT_EQ(gap(0), 18);
    EXPECT_EQ(gap(1), 16);
    EXPECT_EQ(gap(2), std::nullopt);
    EXPECT_EQ(gap(3), 16);
    EXPECT_EQ(std::get<Separator>(column().views.at(1).content).width, 480);
    EXPECT_EQ(std::get<Separator>(column().views.at(3).content).width, 480);
}

TEST_F(GuideWindowTest, TheHeaderShowsTheIconAndTheTitle) {
    show();
    const auto header = std::get<Stack>(column().views.at(0).content);
    EXPECT_EQ(header.orientation, Stack::Orientation::horizontal);
    EXPECT_EQ(header.alignment, Stack::Alignment::center);
    EXPECT_EQ(header.spacing, 12);
    const auto icon = std::get<ImageView>(header.views.at(0).content);
    EXPECT_EQ(icon.size, (Size{56, 56}));
    EXPECT_EQ(MemoryImage::nameOf(icon.image), "Ovin");
    const auto title = std::get<Label>(header.views.at(1).content);
    EXPECT_EQ(plainText(title.text), "How Ovin works");
    EXPECT_EQ(title.text.front().font, (Font{28, Font::Weight::bold}));
}

TEST_F(GuideWindowTest, WithoutItsIconFileTheHeaderShowsTheApplicationsOwnIcon) {
    world.resources.pictures.erase("Ovin");
    show();
    EXPECT_EQ(viewsOf<ImageView>(column().views.at(0)).at(0).image, world.resources.icon);
}

TEST_F(GuideWindowTest, ReturnOrganizesAndEscapeClosesWhileNobodyOrganizes) {
    show();
    const auto buttons = viewsOf<PushButton>(window().content);
    ASSERT_THAT(buttons, SizeIs(2));
    EXPECT_EQ(buttons.at(0).title, "Done");
    EXPECT_EQ(buttons.at(0).keyEquivalent, KeyEquivalent::escape);
    EXPECT_EQ(buttons.at(1).title, "Organize Menu Bar…");
    EXPECT_EQ(buttons.at(1).keyEquivalent, KeyEquivalent::returnKey);
    const auto row = std::get<Stack>(column().views.at(4).content);
    EXPECT_EQ(row.width, 432);
    EXPECT_EQ(row.spacing, 10);
    EXPECT_TRUE(std::holds_alternative<FlexibleSpace>(row.views.at(0).content));
}

TEST_F(GuideWindowTest, WhileOrganizingThereIsOnlyDoneAndReturnPressesIt) {
    show(true);
    const auto buttons = viewsOf<PushButton>(window().content);
    ASSERT_THAT(buttons, SizeIs(1));
    EXPECT_EQ(buttons.at(0).title, "Done");
    EXPECT_EQ(buttons.at(0).keyEquivalent, KeyEquivalent::returnKey);
}

TEST_F(GuideWindowTest, DoneClosesTheGuide) {
    show();
    world.windows.click(guideTitle, doneTag);
    EXPECT_FALSE(window().isOpen);
    EXPECT_EQ(organizeCount, 0);
}

TEST_F(GuideWindowTest, TheGuideClosesBeforeOrganizingBegins) {
    bool wasOpen = true;
    guide.show(false, [&] { wasOpen = window().isOpen; });
    world.windows.click(guideTitle, organizeTag);
    EXPECT_FALSE(wasOpen);
}

TEST_F(GuideWindowTest, OrganizingMayShowTheGuideAgain) {
    guide.show(false, [this] { show(); });
    world.windows.click(guideTitle, organizeTag);
    EXPECT_TRUE(window().isOpen);
}

TEST_F(GuideWindowTest, ShowingItTwiceLeavesOneGuideThatIsNew) {
    show(false);
    show(true);
    EXPECT_TRUE(window().isOpen);
    EXPECT_EQ(window().showCount, 1);
    EXPECT_THAT(viewsOf<PushButton>(window().content), SizeIs(1));
}

TEST_F(GuideWindowTest, TheApplicationComesToTheFront) {
    show();
    EXPECT_EQ(world.application.activationCount, 1);
    EXPECT_EQ(window().showCount, 1);
}

TEST_F(GuideWindowTest, ThePageIsNeverHigherThan620) {
    world.screens.mainScreen = Screen{{{0, 0}, {4000, 4000}}, {{0, 30}, {4000, 3970}}};
    show();
    EXPECT_EQ(scroll().size, (Size{480, 620}));
    EXPECT_EQ(scroll().orientation, Stack::Orientation::vertical);
}

TEST_F(GuideWindowTest, OnAShortScreenThePageScrolls) {
    world.screens.mainScreen = Screen{{{0, 0}, {1280, 600}}, {{0, 30}, {1280, 570}}};
    show();
    EXPECT_EQ(scroll().size.height, 570 - 190 - 80);
}

TEST_F(GuideWindowTest, WithoutAScreenThePageIs530High) {
    world.screens.mainScreen.reset();
    show();
    EXPECT_EQ(scroll().size.height, 530);
}

TEST_F(GuideWindowTest, TheTestHookScrollsToTheEnd) {
    for (const auto& [value, isAtEnd] : {std::pair("end", true), {"END", false}, {"", false}, {"1", false}}) {
        world.process.setEnvironment("OVIN_TEST_GUIDE", value);
        show();
        EXPECT_EQ(window().isAtEnd, isAtEnd) << value;
    }
}

}  // namespace
}  // namespace ovin
