#include "organize/ArrangeView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "platform/memory/MemoryWorkspace.h"

namespace ovin {
namespace {

using testing::ElementsAre;

const Color labelColor{SystemColor::label};
const Color secondary{SystemColor::secondaryLabel};
const Color orange{SystemColor::systemOrange};

const Image collapsed = MemoryImage::named("collapsed");
const Image expanded = MemoryImage::named("expanded");

ArrangeContent contentAt(double scale) {
    return {scale, true, true, Picture{collapsed, {824, 120}}, Picture{expanded, {412, 30}}};
}

const Stack& stackOf(const View& view) { return std::get<Stack>(view.content); }
const Label& labelOf(const View& view) { return std::get<Label>(view.content); }

/// All the text of a view, hidden ones included.
std::string textOf(const View& view) {
    std::string text;
    if (const auto* label = std::get_if<Label>(&view.content)) {
        for (const TextRun& run : label->text) text += run.text;
    } else if (const auto* button = std::get_if<TextButton>(&view.content)) {
        for (const TextRun& run : button->title) text += run.text;
    } else if (const auto* push = std::get_if<PushButton>(&view.content)) {
        text = push->title;
    }
    return text;
}

std::vector<std::string> textsOf(const Stack& stack) {
    std::vector<std::string> texts;
    for (const View& view : stack.views) texts.push_back(textOf(view));
    return texts;
}

std::string introductionText() {
    return "macOS 27 changed how the menu bar works, which broke the approach used by menu bar managers like Ice and "
           "Bartender. Ovin takes a simpler approach: it temporarily switches your display resolution so you can see every "
           "item and ⌘-drag them into order.";
}
std::string warningText() {
    return "Even at this display’s widest resolution, a few items still don’t fit. Organize the ones you can see; the rest "
           "stay on Ovin’s row.";
}
std::string farewellText() { return "Click Done when you’ve organized your items the way you want."; }

TEST(ArrangeView, ItsTextsStandInOrderWordForWord) {
    const View view = arrangeView(macWords(), contentAt(1));
    EXPECT_THAT(textsOf(stackOf(view)),
                ElementsAre("Organize your menu bar", introductionText(), warningText(), "", "", farewellText(), "Done"));
    EXPECT_THAT(textsOf(stackOf(stackOf(view).views.at(3))), ElementsAre("", "How does this work?"));
    EXPECT_THAT(
        textsOf(stackOf(stackOf(view).views.at(4))),
        ElementsAre(
            "macOS 27 adds an expander («) to the menu bar. Collapsed, it shows as many items as fit.", "",
            "Expanded, it shows the rest over the app menus. Unfortunately, the rest may not all fit on your screen.", "",
            "Ovin increases the screen resolution so you can temporarily see all of your items and ⌘-drag them into "
            "your preferred priority. Back at your normal resolution some will still overflow to the left, but "
            "they’ll be your lowest-priority items."));
}

TEST(ArrangeView, WithoutTheWarningTheRestStaysInOrder) {
    ArrangeContent content = contentAt(1);
    content.hasFitWarning = false;
    EXPECT_THAT(textsOf(stackOf(arrangeView(macWords(), content))),
                ElementsAre("Organize your menu bar", introductionText(), "", "", farewellText(), "Done"));
}

TEST(ArrangeView, EveryGestureInATextIsSetOff) {
    const Font plain{12, Font::Weight::regular};
    const Font bold{12, Font::Weight::bold};
    EXPECT_EQ(arrangeParagraph("You ⌘-drag it, or ⌘-drag that.", 12, 400), (Label{{{"You ", plain, secondary},
                                                                                   {"⌘-drag", bold, labelColor},
                                                                                   {" it, or ", plain, secondary},
                                                                                   {"⌘-drag", bold, labelColor},
                                                                                   {" that.", plain, secondary}},
                                                                                  400}));
    EXPECT_EQ(arrangeParagraph("⌘-drag⌘-drag", 12, 400),
              (Label{{{"⌘-drag", bold, labelColor}, {"⌘-drag", bold, labelColor}}, 400}));
    EXPECT_EQ(arrangeParagraph("⌘-dra", 12, 400), (Label{{{"⌘-dra", plain, secondary}}, 400}));
    EXPECT_EQ(arrangeParagraph("", 12, 400), (Label{{}, 400}));
}

class ScaledArrangeView : public testing::TestWithParam<double> {
protected:
    const double s = GetParam();
    const View view = arrangeView(macWords(), contentAt(s));
    const Stack& stack = stackOf(view);
    const Stack& header = stackOf(stack.views.at(3));
    const Stack& card = stackOf(stack.views.at(4));
};

TEST_P(ScaledArrangeView, TheContentIsAColumnOfScaledDistances) {
    EXPECT_EQ(stack.orientation, Stack::Orientation::vertical);
    EXPECT_EQ(stack.alignment, Stack::Alignment::leading);
    EXPECT_DOUBLE_EQ(stack.spacing, 12 * s);
    EXPECT_DOUBLE_EQ(stack.insets.top, 38 * s);
    EXPECT_DOUBLE_EQ(stack.insets.left, 26 * s);
    EXPECT_DOUBLE_EQ(stack.insets.bottom, 20 * s);
    EXPECT_DOUBLE_EQ(stack.insets.right, 26 * s);
    ASSERT_TRUE(stack.width);
    EXPECT_DOUBLE_EQ(*stack.width, 492 * s);
    EXPECT_FALSE(stack.box);
    for (std::size_t i = 0; i < stack.views.size(); ++i) {
        const View& child = stack.views[i];
        EXPECT_FALSE(child.isHidden);
        EXPECT_EQ(child.spacingAfter.has_value(), i == 5);
    }
    EXPECT_DOUBLE_EQ(*stack.views.at(5).spacingAfter, 16 * s);
}

TEST_P(ScaledArrangeView, TheTitleIsSemibold) {
    const Label& title = labelOf(stack.views.at(0));
    EXPECT_EQ(title, (Label{{{"Organize your menu bar", Font{17 * s, Font::Weight::semibold}, {}}}, {}}));
}

TEST_P(ScaledArrangeView, TheIntroductionSetsOffTheGesture) {
    const Font font{13 * s, Font::Weight::regular};
    EXPECT_EQ(
        labelOf(stack.views.at(1)),
        (Label{{{"macOS 27 changed how the menu bar works, which broke the approach used by menu bar managers like Ice "
                 "and Bartender. Ovin takes a simpler approach: it temporarily switches your display resolution so "
                 "you can see every item and ",
                 font, secondary},
                {"⌘-drag", Font{13 * s, Font::Weight::bold}, labelColor},
                {" them into order.", font, secondary}},
               440 * s}));
}

TEST_P(ScaledArrangeView, TheWarningIsOrange) {
    EXPECT_EQ(labelOf(stack.views.at(2)), (Label{{{warningText(), Font{13 * s, Font::Weight::regular}, orange}}, 440 * s}));
}

TEST_P(ScaledArrangeView, TheHeaderDisclosesTheCard) {
    EXPECT_EQ(header.orientation, Stack::Orientation::horizontal);
    EXPECT_EQ(header.alignment, Stack::Alignment::center);
    EXPECT_DOUBLE_EQ(header.spacing, 4 * s);
    EXPECT_EQ(header.insets, Insets{});
    EXPECT_FALSE(header.width);
    ASSERT_EQ(header.views.size(), 2u);
    EXPECT_EQ(std::get<DisclosureTriangle>(header.views.at(0).content),
              (DisclosureTriangle{true, {13 * s, Font::Weight::medium}, "How does this work?", 1}));
    EXPECT_EQ(std::get<TextButton>(header.views.at(1).content),
              (TextButton{{{"How does this work?", Font{13 * s, Font::Weight::bold}, labelColor}}, "", false, 2}));
}

TEST_P(ScaledArrangeView, TheCardHasABorderThatDoesNotGrow) {
    EXPECT_EQ(card.orientation, Stack::Orientation::vertical);
    EXPECT_EQ(card.alignment, Stack::Alignment::leading);
    EXPECT_DOUBLE_EQ(card.spacing, 10 * s);
    EXPECT_EQ(card.insets, (Insets{14 * s, 14 * s, 14 * s, 14 * s}));
    EXPECT_EQ(card.box, (Box{{SystemColor::quaternaryLabel, 0.08}, {SystemColor::separator}, 1, 10 * s}));
}

TEST_P(ScaledArrangeView, TheCardsParagraphsAreAsWideAsItsInside) {
    ASSERT_EQ(card.views.size(), 5u);
    for (const std::size_t i : {0u, 2u, 4u}) {
        const Label& label = labelOf(card.views.at(i));
        EXPECT_DOUBLE_EQ(label.wrapWidth.value(), 412 * s);
        for (const TextRun& run : label.text) {
            EXPECT_DOUBLE_EQ(run.font.value().size, 12 * s);
            const bool isGesture = run.text == "⌘-drag";
            EXPECT_EQ(run.font.value().weight, isGesture ? Font::Weight::bold : Font::Weight::regular);
            EXPECT_EQ(run.color, isGesture ? labelColor : secondary);
        }
        EXPECT_EQ(label.text.size(), i == 4 ? 3u : 1u);
    }
}

TEST_P(ScaledArrangeView, ThePicturesKeepTheirProportionsAndTheirCorners) {
    const auto& first = std::get<ImageView>(card.views.at(1).content);
    EXPECT_EQ(first.image, collapsed);
    EXPECT_DOUBLE_EQ(first.size.width, 412 * s);
    EXPECT_DOUBLE_EQ(first.size.height, 60 * s);
    EXPECT_EQ(first.cornerRadius, 5);
    const auto& second = std::get<ImageView>(card.views.at(3).content);
    EXPECT_EQ(second.image, expanded);
    EXPECT_DOUBLE_EQ(second.size.width, 412 * s);
    EXPECT_DOUBLE_EQ(second.size.height, 30 * s);
    EXPECT_EQ(second.cornerRadius, 5);
}

TEST_P(ScaledArrangeView, TheReturnKeyIsDone) {
    EXPECT_EQ(std::get<PushButton>(stack.views.at(6).content),
              (PushButton{"Done", Font{14 * s, Font::Weight::medium}, KeyEquivalent::returnKey, true, {}, 3}));
}

INSTANTIATE_TEST_SUITE_P(Scales, ScaledArrangeView, testing::Values(1.0, 1.3, 2.2));

TEST(ArrangeView, ACollapsedCardIsHiddenAndStaysWhereItIs) {
    ArrangeContent content = contentAt(1);
    content.isCardExpanded = false;
    const View view = arrangeView(macWords(), content);
    EXPECT_TRUE(stackOf(view).views.at(4).isHidden);
    EXPECT_EQ(stackOf(stackOf(view).views.at(4)), stackOf(stackOf(arrangeView(macWords(), contentAt(1))).views.at(4)));
    EXPECT_FALSE(std::get<DisclosureTriangle>(stackOf(stackOf(view).views.at(3)).views.at(0).content).isOn);
}

TEST(ArrangeView, AMissingPictureLeavesItsNeighboursInPlace) {
    ArrangeContent content = contentAt(1);
    const Stack complete = stackOf(stackOf(arrangeView(macWords(), content)).views.at(4));
    content.collapsedPicture.reset();
    Stack rest = complete;
    rest.views.erase(rest.views.begin() + 1);
    EXPECT_EQ(stackOf(stackOf(arrangeView(macWords(), content)).views.at(4)), rest);
    content.expandedPicture.reset();
    rest.views.erase(rest.views.begin() + 2);
    EXPECT_EQ(stackOf(stackOf(arrangeView(macWords(), content)).views.at(4)), rest);
}

TEST(ArrangeView, APictureWithoutWidthCountsAsMissing) {
    for (const double width : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        ArrangeContent content = contentAt(1);
        content.collapsedPicture->size.width = width;
        EXPECT_EQ(stackOf(stackOf(arrangeView(macWords(), content)).views.at(4)).views.size(), 4u) << width;
    }
}

}  // namespace
}  // namespace ovin
