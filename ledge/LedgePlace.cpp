#include "ledge/LedgePlace.h"

#include <algorithm>

namespace ovin {
namespace {

using Edge = BarPlace::Edge;

constexpr double distanceFromSide = 8;
constexpr double distanceFromBar = 6;

double right(const Rect& rect) { return rect.origin.x + rect.size.width; }
double bottom(const Rect& rect) { return rect.origin.y + rect.size.height; }

/// Where a length begins that has its middle at `middle`, moved to leave `distance` free at both ends of a range.
double beginning(double middle, double length, double least, double most, double distance) {
    return std::max(least + distance, std::min(middle - length / 2, most - distance - length));
}

Point besideBar(const BarPlace& bar, const Rect& room, Size size) {
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
    double left = screen.visibleFrame.origin.x;
    double top = screen.visibleFrame.origin.y;
    double farX = right(screen.visibleFrame);
    double farY = bottom(screen.visibleFrame);
    if (screen.bar) {
        const Rect& bar = screen.bar->frame;
        switch (screen.bar->edge) {
            case Edge::top:
                top = std::max(top, bottom(bar));
                break;
            case Edge::bottom:
                farY = std::min(farY, bar.origin.y);
                break;
            case Edge::left:
                left = std::max(left, right(bar));
                break;
            case Edge::right:
                farX = std::min(farX, bar.origin.x);
                break;
        }
    }
    return {{left, top}, {farX - left, farY - top}};
}

Point ledgeOrigin(const Screen& screen, Size size) {
    const Rect& frame = screen.frame;
    const Rect room = ledgeRoom(screen);
    if (!screen.bar) return {right(frame) - distanceFromSide - size.width, room.origin.y + distanceFromBar};
    // What passes for a bar may cover the whole screen.
    const Point origin = besideBar(*screen.bar, room, size);
    return {std::max(frame.origin.x, std::min(origin.x, right(frame) - size.width)),
            std::max(frame.origin.y, std::min(origin.y, bottom(frame) - size.height))};
}

}  // namespace ovin
