#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace ovin {

/// A horizontal piece of the bar, in logical pixels from the bar's left end.
struct BarSpan {
    int x = 0;
    int width = 0;

    [[nodiscard]] int end() const { return x + width; }
    friend bool operator==(const BarSpan&, const BarSpan&) = default;
};

/// What the bar has to place.
struct BarContent {
    int barWidth = 0;
    int clockWidth = 0;
    int expanderWidth = 0;
    /// The widths of the status items, from left to right.
    std::vector<int> itemWidths;
    /// Where items must end on the left: what is there belongs to the application's menus ...
    int reservedWidth = 0;
    /// ... unless the user has asked to see more.
    bool isExpanded = false;
};

/// Where everything is. Every item has a slot whether it is drawn or not.
struct BarLayout {
    struct ItemSlot {
        BarSpan span;
        bool isDrawn = false;
        friend bool operator==(const ItemSlot&, const ItemSlot&) = default;
    };

    /// As in `BarContent::itemWidths`. Items that are not drawn come first.
    std::vector<ItemSlot> items;
    /// Present when not all items fit beside the application's menus.
    std::optional<BarSpan> expander;
    BarSpan clock;
};

/// Places as many items as fit, from the clock leftwards. The slots of the others lie over the expander's slot, all with the
/// same right end: they overlap that slot and one another, and nothing that is drawn.
[[nodiscard]] BarLayout layOutBar(const BarContent& content);

/// The place that a dragged item takes among the items when its middle is at `x`: nothing while that is its own place. Only
/// drawn items change places.
[[nodiscard]] std::optional<std::size_t> dropPlace(const BarLayout& layout, std::size_t dragged, int x);

}  // namespace ovin
