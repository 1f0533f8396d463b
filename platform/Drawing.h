#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Color.h"
#include "platform/Geometry.h"

namespace ovin {

/// The appearance of the place that something is drawn into.
enum class Appearance { light, dark };

/// A line along the inside of a shape's edge: the inner half of a stroke of `width`, so that the shape keeps its size.
struct InnerOutline {
    Color color;
    double width = 0;

    friend bool operator==(const InnerOutline&, const InnerOutline&) = default;
};

/// A filled rounded rectangle, in points, with the origin at the bottom left and y growing upwards. It is rotated about the
/// origin first, anticlockwise, and then moved.
struct DrawnShape {
    Rect rect;
    double cornerRadius = 0;
    double rotationDegrees = 0;
    Point translation;
    Color fill;
    std::optional<InnerOutline> outline;

    friend bool operator==(const DrawnShape&, const DrawnShape&) = default;
};

/// An image that is drawn afresh whenever it is rendered, and so follows the appearance of the place that shows it.
struct DrawnImage {
    Size size;
    std::string accessibilityDescription;
    /// The shapes for an appearance, in the order of drawing. Called on any thread.
    std::function<std::vector<DrawnShape>(Appearance)> shapes;
};

}  // namespace ovin
