#include "ledge/LedgePlace.h"

#include <algorithm>

namespace ovin {
namespace {

using Edge = BarPlace::Edge;

constexpr double distanceFromSide = 8;
constexpr double distanceFromBar = 6;

/// Where a length begins that has its middle at `middle`, moved to leave `distance` free at both ends of a range.
double beginning(double middle, double length, double least, double most, double distance) {
    return std::max(least + distance, std::min(middle - length / 2, most - distance - length));
}

Point originBeside(const BarPlace& bar, const Rect& room, Size size) {
    const double x = beginning(bar.clicked.x, size.width, room.origin.x, right(room), distanceFromSide);
    const double y = beginning(bar.clicked.y, size.height, room.origin.y, bottom(room), distanceFromBar);
    switch (bar.edge) {
        case Edge::bottom:
            return {x, bottom(room) - distanceFromBar - size.height};
        case Edge::left:
            return {room.origin.x + distanceFromBar, y};
        case Edge::right:
            return {right(room) - distanceFromBar - size.width, y};
        case Edge::top:
            break;
    }
    return {x, room.origin.y + distanceFromBar};
}

}  // namespace

Rect ledgeRoom(const Screen& screen) {
    return screen.bar ? besideBar(screen.visibleFrame, screen.bar->edge, screen.bar->frame) : screen.visibleFrame;
}

Point ledgeOrigin(const Screen& screen, Size size) {
    const Rect& frame = screen.frame;
    const Rect room = ledgeRoom(screen);
    if (!screen.bar) return {right(frame) - distanceFromSide - size.width, room.origin.y + distanceFromBar};
    // What passes for a bar may cover the whole screen.
    const Point origin = originBeside(*screen.bar, room, size);
    return {std::max(frame.origin.x, std::min(origin.x, right(frame) - size.width)),
            std::max(frame.origin.y, std::min(origin.y, bottom(frame) - size.height))};
}

}  // namespace ovin
