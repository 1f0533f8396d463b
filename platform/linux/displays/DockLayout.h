#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/Screens.h"

/// What bars tell of themselves and of the room that they reserve, all in pixels of the X screen.
namespace ovin {

/// Room along one edge of the X screen, from its edge inwards. With several screens it may reach across one of them.
struct Strut {
    BarPlace::Edge edge = BarPlace::Edge::top;
    double depth = 0;
    /// The first and the last pixel along the edge.
    double first = 0;
    double last = 0;

    friend bool operator==(const Strut&, const Strut&) = default;
};

/// A bar: a shown window of the type that window managers call a dock.
struct Dock {
    Rect frame;
    std::vector<Strut> struts;
};

struct DockLayout {
    /// Of the X screen.
    Size size;
    std::vector<Dock> docks;
    /// What the window manager says is left of the whole X screen. Some say it late, and none for each screen.
    std::optional<Rect> workArea;
};

/// The struts in the numbers of a window's property: four depths, then perhaps the beginnings and ends. Nothing else in them
/// is believed.
[[nodiscard]] std::vector<Strut> strutsOf(std::span<const std::uint32_t> numbers);

/// What the docks on a screen leave of it. The work area counts as well where it can be meant for this screen: where there
/// is one screen only, because some bars are no windows, or no bar on this one.
[[nodiscard]] Rect visibleFrame(const DockLayout& layout, const Rect& screen, bool isOnlyScreen);

/// The bar at a point of the screen: a dock that reserves room, or what no window may cover, or another dock of a bar's
/// shape. Nothing when there is none there.
[[nodiscard]] std::optional<BarPlace> barAt(const DockLayout& layout, const Rect& screen, const Rect& visible, Point point);

/// The only bar there is, as if it was clicked at its end, where bars have their status items: the only dock that reserves
/// room or lies along an edge or, without such docks, the only strip of the screen that no window may cover. Nothing where
/// there are several, or none on this screen.
[[nodiscard]] std::optional<BarPlace> onlyBar(const DockLayout& layout, const Rect& screen, const Rect& visible);

}  // namespace ovin
