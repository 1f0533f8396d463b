#include "app/MenuBarIcon.h"

#include <gtest/gtest.h>

namespace ovin {
namespace {

TEST(MenuBarIcon, IsTwentyTwoByEighteenPointsAndCalledOvin) {
    EXPECT_EQ(MenuBarIcon::image().size, (Size{22, 18}));
    EXPECT_EQ(MenuBarIcon::image().accessibilityDescription, "Ovin");
}

TEST(MenuBarIcon, TheBarHasTheLabelColourWhateverTheAppearance) {
    for (const auto appearance : {Appearance::light, Appearance::dark}) {
        const DrawnShape bar = MenuBarIcon::image().shapes(appearance).at(0);
        EXPECT_EQ(bar.rect, (Rect{{1.5, 2.4}, {19, 2.5}}));
        EXPECT_EQ(bar.cornerRadius, 1.25);
        EXPECT_EQ(bar.rotationDegrees, 0);
        EXPECT_EQ(bar.fill, (Color{SystemColor::label}));
        EXPECT_FALSE(bar.outline);
    }
}

TEST(MenuBarIcon, TheSquareIsTiltedAboutItsCentre) {
    const DrawnShape square = MenuBarIcon::image().shapes(Appearance::light).at(1);
    EXPECT_EQ(square.rect, (Rect{{-4.2, -4.2}, {8.4, 8.4}}));
    EXPECT_EQ(square.cornerRadius, 1.9);
    EXPECT_EQ(square.rotationDegrees, 13);
    EXPECT_EQ(square.translation, (Point{11.5, 11.2}));
}

TEST(MenuBarIcon, LightAndDarkChangeTheSquaresFillAndItsOutline) {
    const DrawnShape light = MenuBarIcon::image().shapes(Appearance::light).at(1);
    const DrawnShape dark = MenuBarIcon::image().shapes(Appearance::dark).at(1);
    EXPECT_EQ(light.fill, (Color{SRGB{0.91, 0.57, 0.16}}));
    EXPECT_EQ(light.outline, (InnerOutline{{SRGB{0.72, 0.4, 0.06}}, 0.6}));
    EXPECT_EQ(dark.fill, (Color{SRGB{0.94, 0.64, 0.24}}));
    EXPECT_FALSE(dark.outline);
}

TEST(MenuBarIcon, TheProductsOrangeIsKept) { EXPECT_EQ(MenuBarIcon::orange, (SRGB{0.93, 0.62, 0.2})); }

}  // namespace
}  // namespace ovin
