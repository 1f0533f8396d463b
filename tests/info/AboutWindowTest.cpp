#include "info/AboutWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "info/AboutPage.h"
#include "platform/memory/MemoryWorld.h"
#include "tests/support/ViewSearch.h"

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::string aboutTitle = "About Ovin";

class AboutWindowTest : public testing::Test {
protected:
    MemoryWorld world;
    AboutWindow about{world.platform()};

    [[nodiscard]] MemoryWindows::Information window() const {
        const auto windows = world.windows.informationWindows();
        EXPECT_THAT(windows, SizeIs(1));
        return windows.at(0);
    }
    [[nodiscard]] Stack column() const { return std::get<Stack>(window().content.content); }
    [[nodiscard]] std::string versionLine() const { return labelTexts(window().content).at(1); }
};

TEST_F(AboutWindowTest, LabelsAndLinksStandInTheirOrder) {
    about.show();
    EXPECT_THAT(labelTexts(window().content), ElementsAre("Ovin", "Version 1.0 (1)", "Made by Vorda"));
    std::vector<std::string> links;
    for (const TextButton& link : viewsOf<TextButton>(window().content)) links.push_back(plainText(link.title));
    EXPECT_THAT(links, ElementsAre("ovin.example ↗", "Contact support ↗", "Discover more at vorda.example ↗",
                                   "Get the occasional email ↗"));

    const auto& views = column().views;
    ASSERT_THAT(views, SizeIs(9));
    EXPECT_TRUE(std::holds_alternative<Stack>(views.at(0).content));
    EXPECT_TRUE(std::holds_alternative<Label>(views.at(1).content));
    EXPECT_TRUE(std::holds_alternative<TextButton>(views.at(2).content));
    EXPECT_TRUE(std::holds_alternative<TextButton>(views.at(3).content));
    EXPECT_EQ(std::get<Separator>(views.at(4).content).width, 340);
    EXPECT_TRUE(std::holds_alternative<Label>(views.at(5).content));
    EXPECT_TRUE(std::holds_alternative<TextButton>(views.at(6).content));
    EXPECT_TRUE(std::holds_alternative<TextButton>(views.at(7).content));
    EXPECT_TRUE(std::holds_alternative<Stack>(views.at(8).content));
}

TEST_F(AboutWindowTest, TheColumnHasItsSpacings) {
    about.show();
    EXPECT_EQ(column().spacing, 12);
    EXPECT_EQ(column().alignment, Stack::Alignment::center);
    EXPECT_EQ(column().insets, (Insets{34, 24, 20, 24}));
    std::vector<std::optional<double>> gaps;
    for (const View& view : column().views) gaps.push_back(view.spacingAfter);
    EXPECT_THAT(gaps, ElementsAre(std::nullopt, 30, std::nullopt, 26, 26, 8, std::nullopt, 34, std::nullopt));
}

TEST_F(AboutWindowTest, TextsHaveTheirFontsAndColors) {
    about.show();
    const auto labels = viewsOf<Label>(window().content);
    EXPECT_EQ(labels.at(0).text, (AttributedText{{"Ovin", Font{40, Font::Weight::bold}, Color{SystemColor::label}}}));
    EXPECT_EQ(labels.at(1).text,
              (AttributedText{{"Version 1.0 (1)", Font{17, Font::Weight::regular}, Color{SystemColor::secondaryLabel}}}));
    EXPECT_EQ(labels.at(2).text,
              (AttributedText{{"Made by Vorda", Font{17, Font::Weight::semibold}, Color{SystemColor::label}}}));
    for (const TextButton& link : viewsOf<TextButton>(window().content)) {
        ASSERT_THAT(link.title, SizeIs(1));
        EXPECT_EQ(link.title.front().font, (Font{17, Font::Weight::regular}));
        EXPECT_EQ(link.title.front().color, Color{SystemColor::label});
        EXPECT_TRUE(link.title.front().isUnderlined);
        EXPECT_TRUE(link.isLink);
    }
}

TEST_F(AboutWindowTest, TheHeaderShowsTheIconAndTheName) {
    about.show();
    const auto header = std::get<Stack>(column().views.at(0).content);
    EXPECT_EQ(header.orientation, Stack::Orientation::horizontal);
    EXPECT_EQ(header.alignment, Stack::Alignment::center);
    EXPECT_EQ(header.spacing, 12);
    const auto icon = std::get<ImageView>(header.views.at(0).content);
    EXPECT_EQ(icon.size, (Size{64, 64}));
    EXPECT_EQ(MemoryImage::nameOf(icon.image), "Ovin");
}

TEST_F(AboutWindowTest, WithoutItsIconFileItShowsTheApplicationsOwnIcon) {
    world.resources.pictures.erase("Ovin");
    about.show();
    EXPECT_EQ(viewsOf<ImageView>(window().content).at(0).image, world.resources.icon);
}

TEST_F(AboutWindowTest, AMissingBuildShowsAsAQuestionMark) {
    world.resources.info = {{"CFBundleShortVersionString", "1.2"}};
    about.show();
    EXPECT_EQ(versionLine(), "Version 1.2 (?)");
}

TEST_F(AboutWindowTest, AMissingVersionShowsAsAQuestionMark) {
    world.resources.info = {{"CFBundleVersion", "7"}};
    about.show();
    EXPECT_EQ(versionLine(), "Version ? (7)");
}

TEST_F(AboutWindowTest, EveryLinkOpensWhatItsToolTipSays) {
    about.show();
    for (const TextButton& link : viewsOf<TextButton>(window().content)) {
        world.windows.click(aboutTitle, link.tag);
        EXPECT_EQ(world.workspace.openedURLs.back(), link.toolTip);
    }
    EXPECT_THAT(world.workspace.openedURLs,
                ElementsAre("https://ovin.example/", "mailto:support@ovin.example?subject=Ovin%201.0",
                            "https://vorda.example/", "https://ovin.example/#news"));
    EXPECT_TRUE(window().isOpen);
}

TEST_F(AboutWindowTest, EscapeOrDoneClosesIt) {
    about.show();
    const auto buttons = viewsOf<PushButton>(window().content);
    ASSERT_THAT(buttons, SizeIs(1));
    EXPECT_EQ(buttons.at(0).title, "Done");
    EXPECT_EQ(buttons.at(0).keyEquivalent, KeyEquivalent::escape);
    EXPECT_EQ(buttons.at(0).width, 82);
    world.windows.click(aboutTitle, buttons.at(0).tag);
    EXPECT_FALSE(window().isOpen);
}

TEST_F(AboutWindowTest, TheWindowIs388WideAndAsHighAsItsContent) {
    about.show();
    EXPECT_EQ(window().size, (Size{388, world.windows.fittingSize(window().content).height}));
    EXPECT_EQ(world.application.activationCount, 1);
}

TEST_F(AboutWindowTest, ASecondShowBringsTheSameWindowForwardOpenOrClosed) {
    about.show();
    about.show();
    EXPECT_EQ(window().showCount, 2);
    world.windows.click(aboutTitle, AboutPage::doneTag);
    about.show();
    EXPECT_TRUE(window().isOpen);
    EXPECT_EQ(window().showCount, 3);
    EXPECT_EQ(world.application.activationCount, 3);
}

TEST_F(AboutWindowTest, TheVersionIsThatOfTheFirstShowing) {
    about.show();
    world.resources.info = {};
    about.show();
    EXPECT_EQ(versionLine(), "Version 1.0 (1)");
}

}  // namespace
}  // namespace ovin
