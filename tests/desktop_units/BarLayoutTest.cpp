#include "desktop/BarLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace ovin {
namespace {

using ItemSlot = BarLayout::ItemSlot;
using testing::ElementsAre;

/// A bar of 200: the clock takes 40 on the right, the application's menus 100 on the left, 60 are left for items.
BarContent bar(std::vector<int> itemWidths) {
    BarContent content;
    content.barWidth = 200;
    content.clockWidth = 40;
    content.expanderWidth = 20;
    content.reservedWidth = 100;
    content.itemWidths = std::move(itemWidths);
    return content;
}

BarContent expandedBar(std::vector<int> itemWidths) {
    BarContent content = bar(std::move(itemWidths));
    content.isExpanded = true;
    return content;
}

bool overlap(const BarSpan& a, const BarSpan& b) { return std::min(a.end(), b.end()) > std::max(a.x, b.x); }

TEST(BarLayout, PutsTheClockAtTheRightEnd) {
    const auto layout = layOutBar(bar({}));
    EXPECT_EQ(layout.clock, (BarSpan{160, 40}));
    EXPECT_FALSE(layout.expander);
}

TEST(BarLayout, PlacesItemsFromTheClockLeftwards) {
    EXPECT_THAT(layOutBar(bar({10, 20})).items, ElementsAre(ItemSlot{{130, 10}, true}, ItemSlot{{140, 20}, true}));
}

TEST(BarLayout, NeedsNoExpanderWhileEverythingFitsExactly) {
    const auto layout = layOutBar(bar({20, 20, 20}));
    EXPECT_FALSE(layout.expander);
    EXPECT_EQ(layout.items.front(), (ItemSlot{{100, 20}, true}));
}

TEST(BarLayout, MakesRoomForTheExpanderOnceSomethingDoesNotFit) {
    const auto layout = layOutBar(bar({20, 20, 20, 20}));
    EXPECT_EQ(layout.expander, (BarSpan{100, 20}));
    EXPECT_THAT(layout.items, ElementsAre(ItemSlot{{100, 20}, false}, ItemSlot{{100, 20}, false}, ItemSlot{{120, 20}, true},
                                          ItemSlot{{140, 20}, true}));
}

TEST(BarLayout, LaysASingleUndrawnItemOverTheExpander) {
    const auto single = layOutBar(bar({30, 20, 20}));
    EXPECT_EQ(single.expander, (BarSpan{100, 20}));
    EXPECT_EQ(single.items.front(), (ItemSlot{{90, 30}, false}));
}

TEST(BarLayout, DrawsNothingLeftOfAnItemThatDoesNotFit) {
    const auto layout = layOutBar(bar({5, 200, 20}));
    EXPECT_THAT(layout.items,
                ElementsAre(ItemSlot{{135, 5}, false}, ItemSlot{{-60, 200}, false}, ItemSlot{{140, 20}, true}));
}

TEST(BarLayout, ShowsMoreOverTheApplicationsHalfWhenExpanded) {
    const auto layout = layOutBar(expandedBar({20, 20, 20, 20}));
    EXPECT_EQ(layout.expander, (BarSpan{60, 20}));
    EXPECT_TRUE(std::all_of(layout.items.begin(), layout.items.end(), [](const auto& item) { return item.isDrawn; }));
}

TEST(BarLayout, LeavesItemsUndrawnThatDoNotFitEvenThen) {
    const auto layout = layOutBar(expandedBar(std::vector<int>(10, 20)));
    EXPECT_EQ(layout.expander, (BarSpan{0, 20}));
    EXPECT_EQ(std::count_if(layout.items.begin(), layout.items.end(), [](const auto& item) { return item.isDrawn; }), 7);
}

TEST(BarLayout, SurvivesABarWithoutAnyRoom) {
    BarContent content = bar({20, 20});
    content.barWidth = 10;
    const auto layout = layOutBar(content);
    EXPECT_FALSE(layout.items.at(0).isDrawn);
    EXPECT_FALSE(layout.items.at(1).isDrawn);
}

TEST(BarLayout, OverlapsUndrawnSlotsAndNothingElse) {
    for (int count = 0; count < 40; ++count) {
        for (const int width : {1, 7, 19, 20, 21, 90}) {
            auto content = bar(std::vector<int>(static_cast<std::size_t>(count), width));
            content.isExpanded = count % 2 == 0;
            const auto layout = layOutBar(content);
            for (std::size_t i = 0; i < layout.items.size(); ++i) {
                const auto& item = layout.items[i];
                EXPECT_FALSE(overlap(item.span, layout.clock));
                EXPECT_EQ(item.span.width, width);
                bool overlapsOther = layout.expander && overlap(item.span, *layout.expander);
                for (std::size_t j = 0; j < layout.items.size(); ++j) {
                    overlapsOther = overlapsOther || (j != i && overlap(item.span, layout.items[j].span));
                }
                EXPECT_EQ(overlapsOther, !item.isDrawn) << count << " items " << width << " wide, item " << i;
            }
        }
    }
}

TEST(DropPlace, IsNothingOverTheItemItself) { EXPECT_FALSE(dropPlace(layOutBar(bar({20, 20})), 0, 125)); }

TEST(DropPlace, IsThatOfTheItemWhoseFartherHalfIsReached) {
    const auto layout = layOutBar(bar({20, 20, 20}));
    EXPECT_FALSE(dropPlace(layout, 0, 125));
    EXPECT_EQ(dropPlace(layout, 0, 131), 1U);
    EXPECT_FALSE(dropPlace(layout, 2, 131));
    EXPECT_EQ(dropPlace(layout, 2, 125), 1U);
}

TEST(DropPlace, IsNeverAnUndrawnItems) { EXPECT_FALSE(dropPlace(layOutBar(bar({20, 20, 20, 20})), 3, 101)); }

}  // namespace
}  // namespace ovin
