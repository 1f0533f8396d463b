#include "ledge/LedgeView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/memory/MemoryWorld.h"

namespace ovin {
namespace {

using Position = Button::ImagePosition;

class LedgeViewTest : public testing::Test {
protected:
    MemoryWorld world;
    MemoryElement root = world.accessibility.launch(1);

    DiscoveredItem item(const std::string& name, const std::string& title, std::optional<Image> icon,
                        std::optional<std::string> label) {
        return {root.element(), name, std::move(icon), title, 1, {}, std::move(label)};
    }

    std::vector<Button> buttons(const std::vector<DiscoveredItem>& items) {
        const View view = ledgeRow(world.text, items, "");
        const auto& outer = std::get<Stack>(view.content);
        EXPECT_EQ(outer.views.size(), 1u);
        std::vector<Button> result;
        for (const View& button : std::get<Stack>(outer.views.at(0).content).views) {
            result.push_back(std::get<Button>(button.content));
        }
        return result;
    }
};

TEST_F(LedgeViewTest, TheRowHasItsInsetsAndSpacings) {
    const View view = ledgeRow(world.text, {item("App", "", {}, {})}, "");
    const auto& outer = std::get<Stack>(view.content);
    EXPECT_EQ(outer.orientation, Stack::Orientation::horizontal);
    EXPECT_EQ(outer.alignment, Stack::Alignment::top);
    EXPECT_EQ(outer.spacing, 12);
    EXPECT_EQ(outer.insets, (Insets{6, 10, 6, 10}));
    const auto& row = std::get<Stack>(outer.views.at(0).content);
    EXPECT_EQ(row.orientation, Stack::Orientation::horizontal);
    EXPECT_EQ(row.spacing, 4);
}

TEST_F(LedgeViewTest, AnEmptyLedgeIsOneLineOfText) {
    const View view = ledgeRow(world.text, {}, "Loading…");
    EXPECT_EQ(std::get<Label>(std::get<Stack>(view.content).views.at(0).content),
              (Label{{{"Loading…", {}, Color{SystemColor::secondaryLabel}}}, {}}));
}

TEST_F(LedgeViewTest, AnItemWithAnIconAndNoLabelIsASquareIcon) {
    const Image icon = MemoryImage::named("icon");
    const Button button = buttons({item("App", "", icon, {})}).at(0);
    EXPECT_EQ(button.image, (SizedImage{icon, {22, 22}}));
    EXPECT_EQ(button.imagePosition, Position::only);
    EXPECT_EQ(button.width, 28);
    EXPECT_EQ(button.height, 28);
    EXPECT_TRUE(button.title.empty());
}

TEST_F(LedgeViewTest, AnItemWithAnIconAndALabelShowsBoth) {
    const Image icon = MemoryImage::named("icon");
    const Button button = buttons({item("App", "", icon, "Label")}).at(0);
    EXPECT_EQ(button.image, (SizedImage{icon, {22, 22}}));
    EXPECT_EQ(button.imagePosition, Position::leading);
    EXPECT_EQ(button.title, (AttributedText{{"Label", Font{10, Font::Weight::regular}, {}}}));
    EXPECT_EQ(button.width, std::nullopt);
    EXPECT_EQ(button.height, 28);
}

TEST_F(LedgeViewTest, AnItemWithALabelAloneShowsIt) {
    const Button button = buttons({item("App", "", {}, "Label")}).at(0);
    EXPECT_EQ(button.image, std::nullopt);
    EXPECT_EQ(button.imagePosition, Position::none);
    EXPECT_EQ(button.title, (AttributedText{{"Label", Font{10, Font::Weight::regular}, {}}}));
}

TEST_F(LedgeViewTest, AnItemWithNeitherShowsTwoCharactersOfItsApplication) {
    const auto all = buttons({item("Application", "", {}, {}), item("A", "", {}, {}), item("", "", {}, {}),
                              item("👨‍👩‍👧‍👦e\u0301x", "", {}, {})});
    EXPECT_EQ(all.at(0).title, (AttributedText{{"Ap", {}, {}}}));
    EXPECT_EQ(all.at(0).width, std::nullopt);
    EXPECT_EQ(all.at(0).imagePosition, Position::none);
    EXPECT_EQ(all.at(1).title, (AttributedText{{"A", {}, {}}}));
    EXPECT_EQ(all.at(2).title, (AttributedText{{"", {}, {}}}));
    EXPECT_EQ(all.at(3).title, (AttributedText{{"👨‍👩‍👧‍👦e\u0301", {}, {}}}));
}

TEST_F(LedgeViewTest, TheToolTipAddsATitleThatSaysMoreThanTheName) {
    const auto all = buttons(
        {item("App", "Wi-Fi", {}, {}), item("App", "App", {}, {}), item("App", "", {}, {}), item("App", "app", {}, {})});
    EXPECT_EQ(all.at(0).toolTip, "App — Wi-Fi");
    EXPECT_EQ(all.at(1).toolTip, "App");
    EXPECT_EQ(all.at(2).toolTip, "App");
    EXPECT_EQ(all.at(3).toolTip, "App — app");
}

TEST_F(LedgeViewTest, TagsCountTheItems) {
    const auto all = buttons(std::vector<DiscoveredItem>(3, item("App", "", {}, {})));
    for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(all[i].tag, static_cast<int>(i));
}

TEST_F(LedgeViewTest, ARowThatFitsFillsTheBackground) {
    const View row = ledgeRow(world.text, {}, "");
    const LedgeContent content = ledgeContent(row, {1472, 40}, 1472);
    EXPECT_EQ(content.size, (Size{1472, 40}));
    const auto& background = std::get<MenuBackground>(content.view.content);
    EXPECT_EQ(background.cornerRadius, 10);
    EXPECT_EQ(*background.content, row);
}

TEST_F(LedgeViewTest, AWiderRowScrollsAtExactlyTheMaximumWidth) {
    const View row = ledgeRow(world.text, {}, "");
    const LedgeContent content = ledgeContent(row, {1472.5, 40}, 1472);
    EXPECT_EQ(content.size, (Size{1472, 40}));
    const auto& scroll = std::get<ScrollView>(std::get<MenuBackground>(content.view.content).content->content);
    EXPECT_EQ(scroll.size, (Size{1472, 40}));
    EXPECT_EQ(*scroll.content, row);
}

}  // namespace
}  // namespace ovin
