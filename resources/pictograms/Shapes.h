#pragma once

#include <vector>

namespace ovin {

struct Spot {
    double x = 0;
    double y = 0;
};

/// Plane shapes as distances from their edge: negative inside, positive outside. So `std::min` unites two shapes and
/// `std::max` intersects them. y grows downwards; angles are degrees from the x axis, clockwise.
namespace Shapes {

double disc(Spot spot, Spot middle, double radius);
double box(Spot spot, Spot topLeft, Spot bottomRight, double cornerRadius);
double polygon(Spot spot, const std::vector<Spot>& corners);

/// Lines have round ends.
double line(Spot spot, const std::vector<Spot>& corners, double width);
double arc(Spot spot, Spot middle, double radius, double from, double to, double width);
/// The edge of a shape, as a line whose middle lies there.
double outline(double shape, double width);

double without(double shape, double hole);
/// Where to ask a shape about `spot` after the shape was turned about `middle`.
Spot turned(Spot spot, Spot middle, double degrees);

}  // namespace Shapes
}  // namespace ovin
