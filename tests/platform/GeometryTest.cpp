#include "platform/Geometry.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace ovin {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Both ways round, because the order must not matter.
std::optional<Rect> common(const Rect& a, const Rect& b) {
    const auto result = intersection(a, b);
    EXPECT_EQ(intersection(b, a), result);
    return result;
}

TEST(Intersection, OverlappingRectanglesShareTheirOverlap) {
    EXPECT_EQ(common({{0, 0}, {10, 10}}, {{5, -5}, {10, 10}}), (Rect{{5, 0}, {5, 5}}));
}

TEST(Intersection, ARectangleWithinAnotherIsTheCommonPart) {
    EXPECT_EQ(common({{0, 0}, {100, 100}}, {{10, 20}, {3, 4}}), (Rect{{10, 20}, {3, 4}}));
}

TEST(Intersection, DisjointRectanglesShareNothing) {
    EXPECT_EQ(common({{0, 0}, {10, 10}}, {{10.5, 0}, {10, 10}}), std::nullopt);
    EXPECT_EQ(common({{0, 0}, {10, 10}}, {{0, -11}, {10, 10}}), std::nullopt);
}

TEST(Intersection, RectanglesThatTouchShareAPartWithoutArea) {
    EXPECT_EQ(common({{0, 0}, {10, 10}}, {{10, 0}, {10, 10}}), (Rect{{10, 0}, {0, 10}}));
    EXPECT_EQ(common({{0, 0}, {10, 10}}, {{0, 10}, {10, 10}}), (Rect{{0, 10}, {10, 0}}));
    EXPECT_EQ(common({{0, 0}, {10, 10}}, {{10, 10}, {10, 10}}), (Rect{{10, 10}, {0, 0}}));
}

TEST(Intersection, AnEmptyRectangleIsStillSomewhere) {
    EXPECT_EQ(common({{5, 5}, {0, 0}}, {{0, 0}, {10, 10}}), (Rect{{5, 5}, {0, 0}}));
    EXPECT_EQ(common({{15, 5}, {0, 0}}, {{0, 0}, {10, 10}}), std::nullopt);
}

TEST(Intersection, NegativeSizesAreNormalised) {
    EXPECT_EQ(common({{10, 10}, {-10, -10}}, {{5, 5}, {10, 10}}), (Rect{{5, 5}, {5, 5}}));
    EXPECT_EQ(common({{10, 10}, {-4, -4}}, {{9, 9}, {-20, -20}}), (Rect{{6, 6}, {3, 3}}));
    EXPECT_EQ(common({{-1, 0}, {-5, 5}}, {{0, 0}, {5, 5}}), std::nullopt);
}

TEST(Intersection, WhatIsNotANumberMeetsNothing) {
    const Rect everything{{-1000, -1000}, {2000, 2000}};
    for (const Rect& rect : std::vector<Rect>{{{notANumber, 0}, {1, 1}},
                                              {{0, notANumber}, {1, 1}},
                                              {{0, 0}, {notANumber, 1}},
                                              {{0, 0}, {1, notANumber}},
                                              {{notANumber, notANumber}, {notANumber, notANumber}}}) {
        EXPECT_EQ(common(rect, everything), std::nullopt);
        EXPECT_EQ(common(rect, rect), std::nullopt);
    }
}

TEST(Intersection, AnInfiniteLengthReachesEverythingOnItsSide) {
    EXPECT_EQ(common({{0, 0}, {infinity, infinity}}, {{50, 60}, {7, 8}}), (Rect{{50, 60}, {7, 8}}));
    EXPECT_EQ(common({{0, 0}, {-infinity, 10}}, {{-50, 0}, {7, 8}}), (Rect{{-50, 0}, {7, 8}}));
    EXPECT_EQ(common({{0, 0}, {infinity, 10}}, {{-50, 0}, {7, 8}}), std::nullopt);
    EXPECT_EQ(common({{0, 0}, {infinity, 10}}, {{5, 0}, {infinity, 10}}), (Rect{{5, 0}, {infinity, 10}}));
}

TEST(Intersection, RectanglesMeetNothingAtInfinity) {
    EXPECT_EQ(common({{infinity, 0}, {1, 1}}, {{infinity, 0}, {1, 1}}), std::nullopt);
    EXPECT_EQ(common({{infinity, 0}, {1, 1}}, {{0, 0}, {infinity, 1}}), std::nullopt);
    EXPECT_EQ(common({{-infinity, 0}, {infinity, 1}}, {{0, 0}, {1, 1}}), std::nullopt);
}

TEST(Intersection, HugeNumbersDoNotOverflowIntoNonsense) {
    constexpr double huge = std::numeric_limits<double>::max();
    EXPECT_EQ(common({{huge, 0}, {huge, 1}}, {{0, 0}, {1, 1}}), std::nullopt);
    EXPECT_EQ(common({{-huge / 2, -huge / 2}, {huge, huge}}, {{3, 4}, {5, 6}}), (Rect{{3, 4}, {5, 6}}));
}

}  // namespace
}  // namespace ovin
