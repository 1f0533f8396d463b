#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Geometry.h"
#include "platform/Handle.h"

namespace ovin {

/// Where a bar was clicked, in global coordinates.
struct BarPlace {
    enum class Edge { top, bottom, left, right };

    /// The edge of the screen that the bar is at.
    Edge edge = Edge::top;
    /// The bar itself. It may lie within the visible frame of its screen, because some bars reserve no room.
    Rect frame;
    Point clicked;

    friend bool operator==(const BarPlace&, const BarPlace&) = default;
};

/// The part of `area` on the inner side of a bar at an edge of the screen.
[[nodiscard]] inline Rect besideBar(const Rect& area, BarPlace::Edge edge, const Rect& bar) {
    double left = area.origin.x;
    double top = area.origin.y;
    double farX = right(area);
    double farY = bottom(area);
    if (edge == BarPlace::Edge::top) top = std::max(top, bottom(bar));
    if (edge == BarPlace::Edge::bottom) farY = std::min(farY, bar.origin.y);
    if (edge == BarPlace::Edge::left) left = std::max(left, right(bar));
    if (edge == BarPlace::Edge::right) farX = std::min(farX, bar.origin.x);
    return {{left, top}, {farX - left, farY - top}};
}

/// A screen at one moment, in global coordinates: the origin at the top left of the main display, y growing downwards.
struct Screen {
    Rect frame;
    /// The frame without the menu bar and docks.
    Rect visibleFrame;
    /// Of the screen of a status item: the bar that has the item. Nothing where bars are always the system's menu bar, and
    /// where it is not known.
    std::optional<BarPlace> bar = std::nullopt;

    friend bool operator==(const Screen&, const Screen&) = default;
};

/// The screens of the session. Main thread only.
class Screens {
public:
    /// Ends the observing when destroyed.
    using Observation = Handle;

    virtual ~Screens() = default;

    /// The screen that the user works on: that of the window with the keyboard focus or, where the system does not tell, the
    /// one with the menu bar. Nothing while no screen is connected.
    [[nodiscard]] virtual std::optional<Screen> main() const = 0;

    /// Calls `handler` on the main thread whenever a screen has been plugged in, unplugged or moved or has changed its mode,
    /// until the observation is destroyed. The handler may destroy it.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeChanges(std::function<void()> handler) = 0;
};

}  // namespace ovin
