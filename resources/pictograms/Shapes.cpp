#include "resources/pictograms/Shapes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace ovin::Shapes {
namespace {

constexpr double radian = 3.14159265358979323846 / 180;

double toSegment(Spot spot, Spot from, Spot to) {
    const double x = to.x - from.x;
    const double y = to.y - from.y;
    const double length = x * x + y * y;
    const double part = length > 0 ? ((spot.x - from.x) * x + (spot.y - from.y) * y) / length : 0;
    const double nearest = std::clamp(part, 0.0, 1.0);
    return std::hypot(spot.x - from.x - nearest * x, spot.y - from.y - nearest * y);
}

/// Whether a ray from the spot to the right crosses the edge.
bool crosses(Spot spot, Spot from, Spot to) {
    if ((from.y > spot.y) == (to.y > spot.y)) return false;
    return spot.x < from.x + (spot.y - from.y) / (to.y - from.y) * (to.x - from.x);
}

}  // namespace

double disc(Spot spot, Spot middle, double radius) { return std::hypot(spot.x - middle.x, spot.y - middle.y) - radius; }

double box(Spot spot, Spot topLeft, Spot bottomRight, double cornerRadius) {
    const double x = std::max(topLeft.x - spot.x, spot.x - bottomRight.x) + cornerRadius;
    const double y = std::max(topLeft.y - spot.y, spot.y - bottomRight.y) + cornerRadius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - cornerRadius;
}

double polygon(Spot spot, const std::vector<Spot>& corners) {
    double distance = std::numeric_limits<double>::infinity();
    bool isInside = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Spot next = corners[(i + 1) % corners.size()];
        distance = std::min(distance, toSegment(spot, corners[i], next));
        if (crosses(spot, corners[i], next)) isInside = !isInside;
    }
    return isInside ? -distance : distance;
}

double line(Spot spot, const std::vector<Spot>& corners, double width) {
    double distance = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < corners.size(); ++i)
        distance = std::min(distance, toSegment(spot, corners[i - 1], corners[i]));
    return distance - width / 2;
}

double arc(Spot spot, Spot middle, double radius, double from, double to, double width) {
    const double angle = std::atan2(spot.y - middle.y, spot.x - middle.x) / radian;
    const double ahead = angle - from - 360 * std::floor((angle - from) / 360);
    if (ahead <= to - from) return std::abs(disc(spot, middle, radius)) - width / 2;
    const auto end = [&](double degrees) {
        return Spot{middle.x + radius * std::cos(degrees * radian), middle.y + radius * std::sin(degrees * radian)};
    };
    return std::min(disc(spot, end(from), width / 2), disc(spot, end(to), width / 2));
}

double outline(double shape, double width) { return std::abs(shape) - width / 2; }

double without(double shape, double hole) { return std::max(shape, -hole); }

Spot turned(Spot spot, Spot middle, double degrees) {
    const double cosine = std::cos(degrees * radian);
    const double sine = std::sin(degrees * radian);
    const double x = spot.x - middle.x;
    const double y = spot.y - middle.y;
    return {middle.x + x * cosine + y * sine, middle.y - x * sine + y * cosine};
}

}  // namespace ovin::Shapes
