#include "app/MenuBarIcon.h"

namespace ovin::MenuBarIcon {
namespace {

constexpr SRGB orangeOnDark{0.94, 0.64, 0.24};
constexpr SRGB orangeOnLight{0.91, 0.57, 0.16};
constexpr SRGB edgeOnLight{0.72, 0.4, 0.06};
constexpr double edgeWidth = 0.6;

DrawnShape bar() {
    DrawnShape shape;
    shape.rect = {{1.5, 2.4}, {19, 2.5}};
    shape.cornerRadius = 1.25;
    shape.fill = {SystemColor::label};
    return shape;
}

/// Centred on the origin, so that it is tilted about its centre.
DrawnShape square(Appearance appearance) {
    DrawnShape shape;
    shape.rect = {{-4.2, -4.2}, {8.4, 8.4}};
    shape.cornerRadius = 1.9;
    shape.rotationDegrees = 13;
    shape.translation = {11.5, 11.2};
    shape.fill = {appearance == Appearance::dark ? orangeOnDark : orangeOnLight};
    // On a light bar orange alone is too faint an edge.
    if (appearance == Appearance::light) shape.outline = InnerOutline{{edgeOnLight}, edgeWidth};
    return shape;
}

}  // namespace

const DrawnImage& image() {
    static const DrawnImage image{{22, 18}, "Ovin", [](Appearance appearance) {
                                      return std::vector{bar(), square(appearance)};
                                  }};
    return image;
}

}  // namespace ovin::MenuBarIcon
