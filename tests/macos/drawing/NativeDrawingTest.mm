#include "platform/macos/drawing/NativeDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/MenuBarIcon.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

/// Ovin's icon, drawn ten times as large in an appearance.
class DrawnIcon {
public:
    explicit DrawnIcon(NSAppearanceName appearance) {
        NSBitmapImageRep* bitmap = bitmap_;
        [[NSAppearance appearanceNamed:appearance] performAsCurrentDrawingAppearance:^{
          [NSGraphicsContext saveGraphicsState];
          NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
          [nativeImage(MenuBarIcon::image()) drawInRect:NSMakeRect(0, 0, 22 * scale, 18 * scale)];
          [NSGraphicsContext restoreGraphicsState];
        }];
    }

    /// The colour at a point of the icon, whose origin is at the bottom left; a bitmap counts from the top.
    [[nodiscard]] NSColor* at(double x, double y) const {
        NSColor* color = [bitmap_ colorAtX:std::lround(x * scale) y:std::lround((18 - y) * scale)];
        return [color colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
    }

private:
    static constexpr int scale = 10;

    NSBitmapImageRep* const bitmap_ = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                              pixelsWide:22 * scale
                                                                              pixelsHigh:18 * scale
                                                                           bitsPerSample:8
                                                                         samplesPerPixel:4
                                                                                hasAlpha:YES
                                                                                isPlanar:NO
                                                                          colorSpaceName:NSCalibratedRGBColorSpace
                                                                             bytesPerRow:0
                                                                            bitsPerPixel:0];
};

void expectColor(NSColor* shown, SRGB expected) {
    constexpr double rounding = 0.03;
    EXPECT_NEAR(shown.redComponent, expected.red, rounding);
    EXPECT_NEAR(shown.greenComponent, expected.green, rounding);
    EXPECT_NEAR(shown.blueComponent, expected.blue, rounding);
    EXPECT_NEAR(shown.alphaComponent, 1, rounding);
}

// Where the square is only if it is tilted anticlockwise, just within its left edge, in the bar, and beside both.
constexpr Point tilted{15.7, 9.9};
constexpr Point edge{7.55, 10.29};
constexpr Point bar{11, 3.6};
constexpr Point outside{2, 16};

TEST(NativeDrawingTest, OnALightBarTheIconHasADarkBarAndASquareWithAnEdge) {
    const DrawnIcon icon(NSAppearanceNameAqua);
    expectColor(icon.at(tilted.x, tilted.y), {0.91, 0.57, 0.16});
    expectColor(icon.at(edge.x, edge.y), {0.72, 0.4, 0.06});
    EXPECT_LT(icon.at(bar.x, bar.y).redComponent, 0.3);
    EXPECT_GT(icon.at(bar.x, bar.y).alphaComponent, 0.5);
    EXPECT_EQ(icon.at(outside.x, outside.y).alphaComponent, 0);
}

TEST(NativeDrawingTest, OnADarkBarTheIconHasALightBarAndASquareWithoutAnEdge) {
    const DrawnIcon icon(NSAppearanceNameDarkAqua);
    expectColor(icon.at(tilted.x, tilted.y), {0.94, 0.64, 0.24});
    expectColor(icon.at(edge.x, edge.y), {0.94, 0.64, 0.24});
    EXPECT_GT(icon.at(bar.x, bar.y).redComponent, 0.7);
    EXPECT_GT(icon.at(bar.x, bar.y).alphaComponent, 0.5);
    EXPECT_EQ(icon.at(outside.x, outside.y).alphaComponent, 0);
}

TEST(NativeDrawingTest, TheIconKeepsItsColoursAndIsDrawnAnewForEachPlace) {
    NSImage* image = nativeImage(MenuBarIcon::image());
    EXPECT_FALSE([image isTemplate]);
    EXPECT_EQ(image.cacheMode, NSImageCacheNever);
    EXPECT_TRUE(NSEqualSizes(image.size, NSMakeSize(22, 18)));
    EXPECT_EQ(toString(image.accessibilityDescription), "Ovin");
}

TEST(NativeDrawingTest, TheSystemHasTheSymbolThatOvinShowsAndNoOther) {
    EXPECT_EQ(toString(nativeSymbol("checkmark.circle.fill", "Done").accessibilityDescription), "Done");
    EXPECT_EQ(nativeSymbol("no.such.symbol", "Done"), nil);
}

}  // namespace
}  // namespace ovin
