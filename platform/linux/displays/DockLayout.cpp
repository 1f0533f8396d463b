#include "platform/linux/displays/DockLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ovin {
namespace {

using Edge = BarPlace::Edge;

constexpr std::size_t plainLength = 4;
constexpr std::size_t partialLength = 12;

bool hasArea(const std::optional<Rect>& rect) { return rect && rect->size.width > 0 && rect->size.height > 0; }

Rect placeOf(const Strut& strut, Size screen) {
    const double length = strut.last - strut.first + 1;
    switch (strut.edge) {
        case Edge::top:
            return {{strut.first, 0}, {length, strut.depth}};
        case Edge::bottom:
            return {{strut.first, screen.height - strut.depth}, {length, strut.depth}};
        case Edge::left:
            return {{0, strut.first}, {strut.depth, length}};
        case Edge::right:
            break;
    }
    return {{screen.width - strut.depth, strut.first}, {strut.depth, length}};
}

bool isWide(const Dock& dock) { return dock.frame.size.width >= dock.frame.size.height; }

/// By its deepest strut, or else by its shape and the nearer edge.
Edge edgeOf(const Dock& dock, const Rect& screen) {
    const auto deepest = std::max_element(dock.struts.begin(), dock.struts.end(),
                                          [](const Strut& one, const Strut& other) { return one.depth < other.depth; });
    if (deepest != dock.struts.end()) return deepest->edge;
    const Rect& frame = dock.frame;
    if (isWide(dock)) return frame.origin.y + bottom(frame) <= screen.origin.y + bottom(screen) ? Edge::top : Edge::bottom;
    return frame.origin.x + right(frame) <= screen.origin.x + right(screen) ? Edge::left : Edge::right;
}

/// Whether the dock is shaped as bars are. System monitors are docks too: they reserve nothing, and cover the screen or
/// stand somewhere on it.
bool isStrip(const Dock& dock, const Rect& screen) {
    const Size& size = dock.frame.size;
    return isWide(dock) ? size.height < screen.size.height / 2 : size.width < screen.size.width / 2;
}

bool isAlongAnEdge(const Dock& dock, const Rect& screen) {
    const Rect& frame = dock.frame;
    if (isWide(dock)) return frame.origin.y <= screen.origin.y || bottom(frame) >= bottom(screen);
    return frame.origin.x <= screen.origin.x || right(frame) >= right(screen);
}

/// Whether the dock is a bar of this screen, wherever the item was clicked.
bool isBar(const Dock& dock, const Rect& screen) {
    if (!hasArea(intersection(dock.frame, screen))) return false;
    return !dock.struts.empty() || (isStrip(dock, screen) && isAlongAnEdge(dock, screen));
}

/// The strip between the edge and the visible frame that has the point.
std::optional<BarPlace> stripAt(const Rect& screen, const Rect& visible, Point point) {
    if (!contains(screen, point) || contains(visible, point)) return std::nullopt;
    if (point.y < visible.origin.y)
        return BarPlace{Edge::top, {screen.origin, {screen.size.width, visible.origin.y - screen.origin.y}}, point};
    if (point.y >= bottom(visible)) {
        return BarPlace{Edge::bottom,
                        {{screen.origin.x, bottom(visible)}, {screen.size.width, bottom(screen) - bottom(visible)}},
                        point};
    }
    if (point.x < visible.origin.x)
        return BarPlace{Edge::left, {screen.origin, {visible.origin.x - screen.origin.x, screen.size.height}}, point};
    return BarPlace{
        Edge::right, {{right(visible), screen.origin.y}, {right(screen) - right(visible), screen.size.height}}, point};
}

}  // namespace

std::vector<Strut> strutsOf(std::span<const std::uint32_t> numbers) {
    constexpr std::array edges{Edge::left, Edge::right, Edge::top, Edge::bottom};
    constexpr double farthest = 65535;
    std::vector<Strut> struts;
    if (numbers.size() < plainLength) return struts;
    for (std::size_t index = 0; index < edges.size(); ++index) {
        if (numbers[index] == 0) continue;
        Strut strut{edges.at(index), static_cast<double>(numbers[index]), 0, farthest};
        if (numbers.size() >= partialLength) {
            strut.first = numbers[plainLength + 2 * index];
            strut.last = numbers[plainLength + 2 * index + 1];
        }
        struts.push_back(strut);
    }
    return struts;
}

Rect visibleFrame(const DockLayout& layout, const Rect& screen, bool isOnlyScreen) {
    Rect visible = screen;
    bool hasDocks = false;
    for (const Dock& dock : layout.docks) {
        // Of another screen, across which its strut may reach.
        if (!hasArea(intersection(dock.frame, screen))) continue;
        hasDocks = hasDocks || isBar(dock, screen);
        for (const Strut& strut : dock.struts) {
            const auto reserved = intersection(placeOf(strut, layout.size), screen);
            if (!hasArea(reserved)) continue;
            const Rect rest = besideBar(visible, strut.edge, *reserved);
            if (hasArea(rest)) visible = rest;
        }
    }
    if (layout.workArea && (isOnlyScreen || !hasDocks)) {
        const auto rest = intersection(visible, *layout.workArea);
        if (hasArea(rest)) visible = *rest;
    }
    return visible;
}

std::optional<BarPlace> barAt(const DockLayout& layout, const Rect& screen, const Rect& visible, Point point) {
    const auto dockAt = [&](auto isWanted) -> std::optional<BarPlace> {
        for (const Dock& dock : layout.docks) {
            if (contains(dock.frame, point) && isWanted(dock)) return BarPlace{edgeOf(dock, screen), dock.frame, point};
        }
        return std::nullopt;
    };
    if (auto bar = dockAt([](const Dock& dock) { return !dock.struts.empty(); })) return bar;
    if (auto bar = stripAt(screen, visible, point)) return bar;
    return dockAt([&screen](const Dock& dock) { return isStrip(dock, screen); });
}

std::optional<BarPlace> onlyBar(const DockLayout& layout, const Rect& screen, const Rect& visible) {
    std::vector<Dock> bars;
    for (const Dock& dock : layout.docks) {
        if (!dock.struts.empty() || isBar(dock, screen)) bars.push_back(dock);
    }
    if (bars.size() == 1 && isBar(bars.front(), screen)) {
        const Rect& frame = bars.front().frame;
        return BarPlace{edgeOf(bars.front(), screen), frame, {right(frame), bottom(frame)}};
    }
    if (!bars.empty()) return std::nullopt;
    const Point end{right(screen) - 1, bottom(screen) - 1};
    std::vector<Point> ends;
    if (visible.origin.y > screen.origin.y) ends.push_back({end.x, screen.origin.y});
    if (bottom(visible) < bottom(screen)) ends.push_back(end);
    if (visible.origin.x > screen.origin.x) ends.push_back({screen.origin.x, end.y});
    if (right(visible) < right(screen)) ends.push_back(end);
    return ends.size() == 1 ? stripAt(screen, visible, ends.front()) : std::nullopt;
}

}  // namespace ovin
