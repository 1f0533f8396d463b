#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ovin {

/// A piece of the guide's page.
struct GuidePiece {
    enum class Kind { heading, paragraph, closing, picture };

    Kind kind = Kind::paragraph;
    /// What stands between two "**" in a paragraph is bold. A picture's text is its caption.
    std::string text;
    /// The name of a picture among the resources.
    std::string picture = {};
};

/// The sentences that only one system's windows can say, because they name its parts, gestures or settings. What both
/// systems' windows say stands where it is shown.
struct Words {
    /// From top to bottom.
    std::vector<GuidePiece> guide;

    /// What the organizing card says first.
    std::string introduction;
    /// What its lower part explains: above the picture of the bar with few items, above that with many, and at the end.
    /// Without a text there is no paragraph.
    std::string aboutCollapsed;
    std::string aboutExpanded;
    std::string aboutWidening;

    /// Why nothing is organized: every item is drawn, ...
    std::string everythingIsDrawn;
    /// ... the main display shows the same as another one, ...
    std::string mirrored;
    /// ... the system did not change the mode, ...
    std::string refused;
    /// ... no display of this session can change its mode, ...
    std::string fixedModes;
    /// ... or the bar does not tell what it draws. Absent where a display is widened all the same.
    std::optional<std::string> withoutLayout;

    /// What the ledge says when there is nothing to show.
    std::string emptyLedge;
};

/// As macOS and its menu bar are called. May be called on any thread, like `desktopWords`.
[[nodiscard]] const Words& macWords();

/// For desktops with a bar, or without any, that is not known beforehand.
[[nodiscard]] const Words& desktopWords();

}  // namespace ovin
