#include "desktop/BarLayout.h"

#include <numeric>

namespace ovin {
namespace {

/// How many items, counted from the right, fit into `room`.
std::size_t fittingItems(const std::vector<int>& widths, int room) {
    std::size_t count = 0;
    for (auto width = widths.rbegin(); width != widths.rend() && *width <= room; ++width) {
        room -= *width;
        ++count;
    }
    return count;
}

std::size_t drawnItems(const BarContent& content, int clockX) {
    const int left = content.isExpanded ? 0 : content.reservedWidth;
    return fittingItems(content.itemWidths, clockX - left - content.expanderWidth);
}

/// Gives the last `count` items slots that end at `end`; returns where the leftmost begins.
int placeDrawn(BarLayout& layout, const std::vector<int>& widths, std::size_t count, int end) {
    for (std::size_t i = widths.size(); i-- > widths.size() - count;) {
        end -= widths[i];
        layout.items[i] = {{end, widths[i]}, true};
    }
    return end;
}

void stack(BarLayout& layout, const std::vector<int>& widths, std::size_t count, int end) {
    for (std::size_t i = 0; i < count; ++i) layout.items[i] = {{end - widths[i], widths[i]}, false};
}

}  // namespace

BarLayout layOutBar(const BarContent& content) {
    BarLayout layout;
    layout.clock = {content.barWidth - content.clockWidth, content.clockWidth};
    layout.items.resize(content.itemWidths.size());

    const int needed = std::accumulate(content.itemWidths.begin(), content.itemWidths.end(), 0);
    if (needed <= layout.clock.x - content.reservedWidth) {
        placeDrawn(layout, content.itemWidths, content.itemWidths.size(), layout.clock.x);
        return layout;
    }

    const std::size_t drawn = drawnItems(content, layout.clock.x);
    const int end = placeDrawn(layout, content.itemWidths, drawn, layout.clock.x);
    layout.expander = BarSpan{end - content.expanderWidth, content.expanderWidth};
    stack(layout, content.itemWidths, content.itemWidths.size() - drawn, end);
    return layout;
}

// An item gives way once the dragged one covers half of it, so that neither item jumps back at the next movement.
std::optional<std::size_t> dropPlace(const BarLayout& layout, std::size_t dragged, int x) {
    for (std::size_t i = 0; i < layout.items.size(); ++i) {
        const auto& [span, isDrawn] = layout.items[i];
        if (!isDrawn || i == dragged || x < span.x || x >= span.end()) continue;
        const int middle = span.x + span.width / 2;
        if (i < dragged ? x < middle : x >= middle) return i;
    }
    return std::nullopt;
}

}  // namespace ovin
