#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "discovery/DiscoveredItem.h"
#include "platform/Text.h"
#include "platform/Views.h"

namespace ovin {

/// The tag of the button that opens this application's own menu.
inline constexpr int ledgeMenuTag = -1;

/// The ledge's row: a button for each item, tagged with the item's index, or `whenEmpty`, one line of text. With `menuIcon`
/// the button of this application's own menu, which has that icon, comes last.
[[nodiscard]] View ledgeRow(const Text& text, const std::vector<DiscoveredItem>& items, std::string_view whenEmpty,
                            const std::optional<Image>& menuIcon = {});

/// The whole ledge around a row that takes `fittingSize`: as wide as that, or `maximumWidth` wide and scrolling.
struct LedgeContent {
    View view;
    Size size;
};
[[nodiscard]] LedgeContent ledgeContent(View row, Size fittingSize, double maximumWidth);

}  // namespace ovin
