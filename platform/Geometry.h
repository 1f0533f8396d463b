#pragma once

#include <algorithm>
#include <optional>

namespace ovin {

/// Lengths are points in double precision. Unless a function says otherwise, coordinates are the Accessibility interface's
/// global ones: the origin is the top left corner of the main display and y grows downwards.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// A size may be negative or not a number: it is whatever another process said it was.
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

/// The common part of two rectangles, or nothing when they are disjoint. Negative sizes are normalised first, and
/// rectangles that share only an edge or a corner have a common part without area: both are the rules of the macOS
/// function `CGRectIntersection`. A rectangle with an edge that is not a number meets nothing.
[[nodiscard]] inline std::optional<Rect> intersection(const Rect& a, const Rect& b) {
    struct Span {
        double lower;
        double upper;
    };
    const auto span = [](double origin, double length) {
        return length < 0 ? Span{origin + length, origin} : Span{origin, origin + length};
    };
    const auto common = [](Span one, Span other) -> std::optional<Span> {
        if (!(one.lower <= other.upper) || !(other.lower <= one.upper)) return std::nullopt;
        if (!(one.lower <= one.upper) || !(other.lower <= other.upper)) return std::nullopt;
        return Span{std::max(one.lower, other.lower), std::min(one.upper, other.upper)};
    };

    const auto x = common(span(a.origin.x, a.size.width), span(b.origin.x, b.size.width));
    const auto y = common(span(a.origin.y, a.size.height), span(b.origin.y, b.size.height));
    if (!x || !y) return std::nullopt;
    return Rect{{x->lower, y->lower}, {x->upper - x->lower, y->upper - y->lower}};
}

}  // namespace ovin
