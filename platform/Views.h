#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Image.h"

/// What windows show, as plain values: the logic describes it, a world draws it with its toolkit's own views and layout, and
/// can read it back from them. Lengths are points.
namespace ovin {

/// The system font. Absent where the control's own font is meant.
struct Font {
    enum class Weight { regular, medium, semibold, bold };

    double size = 13;
    Weight weight = Weight::regular;

    friend bool operator==(const Font&, const Font&) = default;
};

/// Text of one kind. Without a font or a colour it has those of the control that shows it.
struct TextRun {
    std::string text;
    std::optional<Font> font;
    std::optional<Color> color;

    friend bool operator==(const TextRun&, const TextRun&) = default;
};
using AttributedText = std::vector<TextRun>;

struct Insets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    friend bool operator==(const Insets&, const Insets&) = default;
};

struct View;

/// Views one after the other, from left to right or from top to bottom.
struct Stack {
    enum class Orientation { horizontal, vertical };
    /// Across the orientation.
    enum class Alignment { center, top, leading };

    Orientation orientation = Orientation::vertical;
    Alignment alignment = Alignment::leading;
    double spacing = 0;
    Insets insets;
    std::vector<View> views;

    friend bool operator==(const Stack&, const Stack&);
};

/// A line of text, or a paragraph of fixed width that wraps its lines.
struct Label {
    AttributedText text;
    std::optional<double> wrapWidth;

    friend bool operator==(const Label&, const Label&) = default;
};

/// An image drawn at a size, keeping its proportions.
struct SizedImage {
    Image image;
    Size size;

    friend bool operator==(const SizedImage&, const SizedImage&) = default;
};

struct Button {
    /// Where the image stands with regard to the title.
    enum class ImagePosition { none, only, leading };

    AttributedText title;
    std::optional<SizedImage> image;
    ImagePosition imagePosition = ImagePosition::none;
    /// Also what assistive programs call the button.
    std::string toolTip;
    std::optional<double> width;
    std::optional<double> height;
    /// Tells the buttons of one window apart; delivered with the click.
    int tag = 0;

    friend bool operator==(const Button&, const Button&) = default;
};

/// A window that is narrower than its content: scrolls sideways, with scrollers that overlay it.
struct ScrollView {
    Size size;
    std::shared_ptr<const View> content;

    friend bool operator==(const ScrollView& a, const ScrollView& b);
};

/// The system's material for menus, with rounded corners, behind one view that fills it.
struct MenuBackground {
    double cornerRadius = 0;
    std::shared_ptr<const View> content;

    friend bool operator==(const MenuBackground& a, const MenuBackground& b);
};

struct View {
    std::variant<Stack, Label, Button, ScrollView, MenuBackground> content;

    friend bool operator==(const View&, const View&) = default;
};

inline bool operator==(const Stack& a, const Stack& b) {
    return a.orientation == b.orientation && a.alignment == b.alignment && a.spacing == b.spacing && a.insets == b.insets &&
           a.views == b.views;
}

inline bool operator==(const ScrollView& a, const ScrollView& b) { return a.size == b.size && *a.content == *b.content; }

inline bool operator==(const MenuBackground& a, const MenuBackground& b) {
    return a.cornerRadius == b.cornerRadius && *a.content == *b.content;
}

}  // namespace ovin
