#pragma once

#include <optional>
#include <string_view>

#include "platform/Resources.h"
#include "platform/Views.h"
#include "platform/Words.h"

namespace ovin {

/// The buttons of the arrange window.
enum class ArrangeButton : int { disclosure = 1, howDoesThisWork, done };

/// What the arrange window tells at one moment.
struct ArrangeContent {
    /// All lengths but border widths and the corners of pictures are multiplied by it.
    double scale = 1;
    bool isCardExpanded = true;
    bool hasFitWarning = false;
    /// The menu bar with its expander collapsed, and expanded.
    std::optional<Picture> collapsedPicture = {};
    std::optional<Picture> expandedPicture = {};
};

/// A paragraph of the window, in which the gesture "⌘-drag" is set off wherever it occurs. `size` is that of the font.
[[nodiscard]] Label arrangeParagraph(std::string_view text, double size, double width);

/// The arrange window's content: what goes on, what to do, a card that explains it, and the button that ends it.
[[nodiscard]] View arrangeView(const Words& words, const ArrangeContent& content);

}  // namespace ovin
