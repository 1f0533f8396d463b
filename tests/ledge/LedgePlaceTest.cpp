#include "ledge/LedgePlace.h"

#include <gtest/gtest.h>

namespace ovin {
namespace {

using Edge = BarPlace::Edge;

constexpr Size ledge{200, 40};

/// The second of two screens, with a bar of 30 points at one of its edges.
class LedgePlaceTest : public testing::Test {
protected:
    Screen screen{{{1000, 100}, {1280, 800}}, {{1000, 100}, {1280, 800}}};

    Point placeAt(Edge edge, Point clicked) {
        const Rect frames[] = {
            {{1000, 100}, {1280, 30}}, {{1000, 870}, {1280, 30}}, {{1000, 100}, {30, 800}}, {{2250, 100}, {30, 800}}};
        screen.bar = BarPlace{edge, frames[static_cast<int>(edge)], clicked};
        return ledgeOrigin(screen, ledge);
    }
};

TEST_F(LedgePlaceTest, WithoutABarItHangsUnderTheMenuBarEightFromTheRightEdge) {
    screen.visibleFrame = {{1060, 137}, {1200, 700}};
    EXPECT_EQ(ledgeOrigin(screen, ledge), (Point{2280 - 8 - 200, 137 + 6}));
    EXPECT_EQ(ledgeRoom(screen), screen.visibleFrame);
}

TEST_F(LedgePlaceTest, ItStandsBelowABarAtTheTop) { EXPECT_EQ(placeAt(Edge::top, {1500, 115}), (Point{1400, 136})); }

TEST_F(LedgePlaceTest, ItStandsAboveABarAtTheBottom) {
    EXPECT_EQ(placeAt(Edge::bottom, {1500, 885}), (Point{1400, 870 - 6 - 40}));
}

TEST_F(LedgePlaceTest, ItStandsBesideABarAtTheSide) {
    EXPECT_EQ(placeAt(Edge::left, {1015, 400}), (Point{1036, 380}));
    EXPECT_EQ(placeAt(Edge::right, {2265, 400}), (Point{2250 - 6 - 200, 380}));
}

TEST_F(LedgePlaceTest, AtTheEndsOfABarItStaysOnTheScreen) {
    EXPECT_EQ(placeAt(Edge::bottom, {1003, 885}).x, 1008);
    EXPECT_EQ(placeAt(Edge::bottom, {2277, 885}).x, 2280 - 8 - 200);
    EXPECT_EQ(placeAt(Edge::left, {1015, 101}).y, 106);
    EXPECT_EQ(placeAt(Edge::left, {1015, 899}).y, 900 - 6 - 40);
}

TEST_F(LedgePlaceTest, ItCoversNoOtherBarOfTheScreen) {
    screen.visibleFrame = {{1050, 130}, {1200, 710}};
    EXPECT_EQ(placeAt(Edge::bottom, {2277, 885}), (Point{2250 - 8 - 200, 840 - 6 - 40}));
    EXPECT_EQ(placeAt(Edge::bottom, {1003, 885}).x, 1058);
    EXPECT_EQ(placeAt(Edge::left, {1015, 101}), (Point{1056, 136}));
}

TEST_F(LedgePlaceTest, BesideABarThatReservesNothingThereIsLessRoom) {
    placeAt(Edge::left, {1015, 400});
    EXPECT_EQ(ledgeRoom(screen), (Rect{{1030, 100}, {1250, 800}}));
    placeAt(Edge::bottom, {1015, 400});
    EXPECT_EQ(ledgeRoom(screen), (Rect{{1000, 100}, {1280, 770}}));
}

TEST_F(LedgePlaceTest, ALedgeThatHasNotRoomEnoughBeginsWhereTheRoomBegins) {
    screen.bar = BarPlace{Edge::top, {{1000, 100}, {1280, 30}}, {1500, 115}};
    EXPECT_EQ(ledgeOrigin(screen, {1270, 40}).x, 1008);
}

TEST_F(LedgePlaceTest, BesideWhatCoversTheWholeScreenItIsOnTheScreen) {
    for (const Edge edge : {Edge::top, Edge::bottom, Edge::left, Edge::right}) {
        screen.bar = BarPlace{edge, screen.frame, {1500, 500}};
        const Point origin = ledgeOrigin(screen, {200, 40});
        EXPECT_GE(origin.x, screen.frame.origin.x);
        EXPECT_GE(origin.y, screen.frame.origin.y);
        EXPECT_LE(origin.x + 200, screen.frame.origin.x + screen.frame.size.width);
        EXPECT_LE(origin.y + 40, screen.frame.origin.y + screen.frame.size.height);
    }
}

}  // namespace
}  // namespace ovin
