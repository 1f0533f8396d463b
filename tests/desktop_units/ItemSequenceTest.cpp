#include "desktop/ItemSequence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ovin {
namespace {

using ItemSequence::arranged;
using ItemSequence::merged;
using ItemSequence::newKey;
using testing::ElementsAre;

TEST(ItemKey, CountsTheItemsOfAProgram) {
    EXPECT_EQ(newKey("mail", {}), "mail#1");
    EXPECT_EQ(newKey("mail", {"mail#1", "mail#2"}), "mail#3");
}

TEST(ItemKey, FillsTheGapOfAnItemThatLeft) { EXPECT_EQ(newKey("mail", {"mail#2"}), "mail#1"); }

TEST(ItemKey, IsOneLineOfSaneLength) {
    EXPECT_EQ(newKey("a\nb#1", {}), "a_b_1#1");
    EXPECT_EQ(newKey(std::string(1'000'000, 'x'), {}).size(), 130U);
    EXPECT_EQ(newKey("", {}), "unnamed#1");
}

TEST(ItemArrangement, PutsTheNewestItemLeftmost) {
    EXPECT_THAT(arranged({{"a", 1}, {"b", 3}, {"c", 2}}, {}), ElementsAre(1, 2, 0));
}

TEST(ItemArrangement, FollowsTheStoredOrder) {
    EXPECT_THAT(arranged({{"a", 1}, {"b", 3}, {"c", 2}}, {"c", "a", "b"}), ElementsAre(2, 0, 1));
}

TEST(ItemArrangement, PutsItemsThatNobodyHasMovedLeftOfTheOthers) {
    EXPECT_THAT(arranged({{"a", 1}, {"new", 2}, {"newer", 3}}, {"gone", "a"}), ElementsAre(2, 1, 0));
}

TEST(StoredOrder, IsTheBarsWhenNothingWasStored) { EXPECT_THAT(merged({}, {"b", "a"}), ElementsAre("b", "a")); }

TEST(StoredOrder, KeepsAbsentItemsBehindTheirNeighbours) {
    EXPECT_THAT(merged({"x", "a", "y", "b"}, {"b", "a"}), ElementsAre("x", "b", "a", "y"));
}

TEST(StoredOrder, KeepsSeveralAbsentItemsInTheirOrder) {
    EXPECT_THAT(merged({"a", "x", "y", "b"}, {"a", "b"}), ElementsAre("a", "x", "y", "b"));
}

TEST(StoredOrder, ForgetsTheLastOfVeryManyAbsentItems) {
    std::vector<std::string> many;
    for (int i = 0; i < 3000; ++i) many.push_back("item#" + std::to_string(i));
    const auto order = merged(many, {"mail#1"});
    EXPECT_EQ(order.size(), 1000U);
    EXPECT_THAT(order, testing::Contains("mail#1"));
}

}  // namespace
}  // namespace ovin
