#include "discovery/AccessibilityReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <string>

#include "discovery/ItemProvider.h"
#include "platform/memory/MemoryWorld.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

class AccessibilityReaderTest : public testing::Test {
protected:
    MemoryWorld world;
    MemoryElement root = world.accessibility.launch(7);
    MemoryElement child = world.accessibility.makeElement(7);

    std::optional<std::vector<AccessibilityElement>> readElements() {
        return AccessibilityReader(world.accessibility).elements(root.element(), "AXChildren");
    }
    std::optional<Rect> readFrame() { return AccessibilityReader(world.accessibility).frame(root.element()); }
    std::optional<std::string> readTitle() {
        return AccessibilityReader(world.accessibility).string(root.element(), "AXTitle");
    }
};

TEST_F(AccessibilityReaderTest, AnArrayOfElementsIsReadInOrder) {
    root.setChildren({child, root});
    EXPECT_THAT(readElements(), Optional(ElementsAre(child.element(), root.element())));
}

TEST_F(AccessibilityReaderTest, AnEmptyArrayIsPresent) {
    root.setChildren({});
    EXPECT_THAT(readElements(), Optional(IsEmpty()));
}

TEST_F(AccessibilityReaderTest, AnArrayWithOneMemberOfAnotherTypeIsAbsent) {
    root.set("AXChildren", {AttributeValue::Array{{child.element()}, {std::string("text")}}});
    EXPECT_EQ(readElements(), std::nullopt);
    root.set("AXChildren", {AttributeValue::Array{{AttributeValue::Null{}}}});
    EXPECT_EQ(readElements(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, AValueThatIsNoArrayIsAbsent) {
    root.set("AXChildren", {child.element()});
    EXPECT_EQ(readElements(), std::nullopt);
    root.set("AXChildren", {std::string("text")});
    EXPECT_EQ(readElements(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, SuccessWithoutAValueIsAbsent) {
    for (const char* attribute : {"AXChildren", "AXPosition", "AXSize", "AXTitle"}) {
        root.set(attribute, {AttributeValue::Null{}});
    }
    EXPECT_EQ(readElements(), std::nullopt);
    EXPECT_EQ(readFrame(), std::nullopt);
    EXPECT_EQ(readTitle(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, EveryErrorCodeIsAbsentEvenWithAValue) {
    for (const auto error :
         {AccessibilityError::cannotComplete, AccessibilityError::noValue, AccessibilityError::apiDisabled,
          AccessibilityError::attributeUnsupported, AccessibilityError{1}}) {
        root.answer("AXTitle", {{std::string("text")}, error});
        EXPECT_EQ(readTitle(), std::nullopt) << static_cast<int>(error);
        root.answer("AXChildren", {{AttributeValue::Array{}}, error});
        EXPECT_EQ(readElements(), std::nullopt) << static_cast<int>(error);
        root.setFrame({{1, 2}, {3, 4}});
        root.answer("AXSize", {{Size{3, 4}}, error});
        EXPECT_EQ(readFrame(), std::nullopt) << static_cast<int>(error);
        root.setFrame({{1, 2}, {3, 4}});
        root.answer("AXPosition", {{Point{1, 2}}, error});
        EXPECT_EQ(readFrame(), std::nullopt) << static_cast<int>(error);
    }
}

TEST_F(AccessibilityReaderTest, AFrameIsPositionAndSizeUnchanged) {
    root.setFrame({{-3.5, 0.25}, {-10, 24.75}});
    EXPECT_THAT(readFrame(), Optional(Rect{{-3.5, 0.25}, {-10, 24.75}}));
}

TEST_F(AccessibilityReaderTest, AZeroSizedElementHasAFrame) {
    root.setFrame({{1, 2}, {0, 0}});
    EXPECT_THAT(readFrame(), Optional(Rect{{1, 2}, {0, 0}}));
}

TEST_F(AccessibilityReaderTest, APositionWithoutASizeIsNoFrame) {
    root.set("AXPosition", {Point{1, 2}});
    EXPECT_EQ(readFrame(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, ASizeWithoutAPositionIsNoFrame) {
    root.set("AXSize", {Size{1, 2}});
    EXPECT_EQ(readFrame(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, APositionOrSizeOfAnotherTypeIsNoFrame) {
    root.set("AXPosition", {Size{1, 2}});
    root.set("AXSize", {Size{1, 2}});
    EXPECT_EQ(readFrame(), std::nullopt);
    root.set("AXPosition", {Point{1, 2}});
    root.set("AXSize", {Point{1, 2}});
    EXPECT_EQ(readFrame(), std::nullopt);
    root.set("AXSize", {AttributeValue::Other{}});
    EXPECT_EQ(readFrame(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, TheSizeIsNotAskedForOnceThePositionFailed) {
    std::vector<std::string> asked;
    world.accessibility.observeRequests([&](const MemoryRequest& request) { asked.push_back(request.name); });
    EXPECT_EQ(readFrame(), std::nullopt);
    EXPECT_THAT(asked, ElementsAre("AXPosition"));
}

TEST_F(AccessibilityReaderTest, APositionOfAnotherTypeIsNoticedAfterTheSizeWasAskedFor) {
    root.set("AXPosition", {std::string("text")});
    std::vector<std::string> asked;
    world.accessibility.observeRequests([&](const MemoryRequest& request) { asked.push_back(request.name); });
    EXPECT_EQ(readFrame(), std::nullopt);
    EXPECT_THAT(asked, ElementsAre("AXPosition", "AXSize"));
}

TEST_F(AccessibilityReaderTest, AnEmptyTitleIsTheSameAsNoTitle) {
    EXPECT_EQ(readTitle(), std::nullopt);
    root.set("AXTitle", {std::string()});
    EXPECT_EQ(readTitle(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, AStringOfWhiteSpaceOrANulIsAString) {
    root.set("AXTitle", {std::string(" ")});
    EXPECT_THAT(readTitle(), Optional(std::string(" ")));
    root.set("AXTitle", {std::string(1, '\0')});
    EXPECT_THAT(readTitle(), Optional(std::string(1, '\0')));
}

TEST_F(AccessibilityReaderTest, AValueThatIsNoStringIsAbsent) {
    root.set("AXTitle", {Point{}});
    EXPECT_EQ(readTitle(), std::nullopt);
}

TEST_F(AccessibilityReaderTest, AProgramThatLeavesTwoRequestsInARowUnansweredIsAskedNothingMore) {
    world.accessibility.setHung(7, true);
    AccessibilityReader reader(world.accessibility);
    int requests = 0;
    world.accessibility.observeRequests([&](const MemoryRequest&) { ++requests; });
    (void)reader.string(root.element(), "AXTitle");
    EXPECT_FALSE(reader.hasFallenSilent());
    (void)reader.frame(root.element());
    EXPECT_TRUE(reader.hasFallenSilent());
    world.accessibility.setHung(7, false);
    root.set("AXTitle", {std::string("title")});
    EXPECT_EQ(reader.string(root.element(), "AXTitle"), std::nullopt);
    EXPECT_EQ(requests, 2);
}

TEST_F(AccessibilityReaderTest, AnyAnswerInBetweenAlsoARefusalIsASignOfLife) {
    AccessibilityReader reader(world.accessibility);
    root.fail("AXDescription", AccessibilityError::noValue);
    for (int i = 0; i < 3; ++i) {
        world.accessibility.setHung(7, true);
        (void)reader.string(root.element(), "AXTitle");
        world.accessibility.setHung(7, false);
        (void)reader.string(root.element(), "AXDescription");
    }
    EXPECT_FALSE(reader.hasFallenSilent());
}

TEST_F(AccessibilityReaderTest, WithoutTrustEveryReaderIsAbsentWithoutBlocking) {
    root.setChildren({child});
    root.setFrame({{1, 2}, {3, 4}});
    root.set("AXTitle", {std::string("text")});
    world.accessibility.setHung(7, true);
    world.accessibility.setTrusted(false);

    EXPECT_FALSE(ItemProvider::isTrusted(world.platform()));
    EXPECT_EQ(readElements(), std::nullopt);
    EXPECT_EQ(readFrame(), std::nullopt);
    EXPECT_EQ(readTitle(), std::nullopt);
    EXPECT_EQ(world.time.now(), 0s);
}

TEST_F(AccessibilityReaderTest, TrustIsAskedAfreshEachTime) {
    world.accessibility.setTrusted(false);
    EXPECT_FALSE(ItemProvider::isTrusted(world.platform()));
    ItemProvider::requestTrust(world.platform());
    EXPECT_EQ(world.accessibility.promptCount(), 1);
    EXPECT_FALSE(ItemProvider::isTrusted(world.platform()));
    world.accessibility.setTrusted(true);
    EXPECT_TRUE(ItemProvider::isTrusted(world.platform()));
}

}  // namespace
}  // namespace ovin
