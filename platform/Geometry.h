#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

namespace ovin {

/// Lengths are points in double precision. Unless a function says otherwise, coordinates are the Accessibility interface's
/// global ones: the origin is the top left corner of the main display and y grows downwards.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// A size as another process reported it: it may be negative or not a number.
struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle as it was delivered. Only `intersection` normalises negative sizes.
struct Rect {
    Point origin;
    Size size;

    friend bool operator==(const Rect&, const Rect&) = default;
};

[[nodiscard]] inline double right(const Rect& rect) { return rect.origin.x + rect.size.width; }
[[nodiscard]] inline double bottom(const Rect& rect) { return rect.origin.y + rect.size.height; }

/// Whether all edges are numbers: the far ones of an infinite rectangle may not be, although the near ones and the lengths
/// are.
[[nodiscard]] inline bool hasEdges(const Rect& rect) { return !std::isnan(right(rect)) && !std::isnan(bottom(rect)); }

/// The near edges belong to a rectangle, the far ones do not.
[[nodiscard]] inline bool contains(const Rect& rect, Point point) {
    return point.x >= rect.origin.x && point.x < right(rect) && point.y >= rect.origin.y && point.y < bottom(rect);
}

/// The common part of two rectangles, or nothing when they are disjoint. Negative sizes are normalised first, and rectangles
/// that share only an edge or a corner have a common part without area: both are the rules of the macOS function
/// `CGRectIntersection`. The result is nothing when an edge or a length is not a number, or when the rectangles meet only at
/// infinity.
[[nodiscard]] inline std::optional<Rect> intersection(const Rect& a, const Rect& b) {
    if (!hasEdges(a) || !hasEdges(b)) return std::nullopt;

    const auto lower = [](double origin, double length) { return std::min(origin, origin + length); };
    const auto upper = [](double origin, double length) { return std::max(origin, origin + length); };

    const double left = std::max(lower(a.origin.x, a.size.width), lower(b.origin.x, b.size.width));
    const double right = std::min(upper(a.origin.x, a.size.width), upper(b.origin.x, b.size.width));
    const double top = std::max(lower(a.origin.y, a.size.height), lower(b.origin.y, b.size.height));
    const double bottom = std::min(upper(a.origin.y, a.size.height), upper(b.origin.y, b.size.height));
    const double width = right - left;
    const double height = bottom - top;
    if (!(width >= 0) || !(height >= 0)) return std::nullopt;
    return Rect{{left, top}, {width, height}};
}

}  // namespace ovin
