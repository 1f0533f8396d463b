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

/// The content of windows as plain values: the logic describes the views, a world draws them with its toolkit's own views
/// and layout. Lengths are in points.
namespace ovin {

/// The system font. An absent font stands for the control's own.
struct Font {
    enum class Weight { regular, medium, semibold, bold };

    double size = 13;
    Weight weight = Weight::regular;

    friend bool operator==(const Font&, const Font&) = default;
};

/// Text of one style. An absent font or colour is that of the control that shows the text.
struct TextRun {
    std::string text;
    std::optional<Font> font = {};
    std::optional<Color> color = {};
    bool isUnderlined = false;

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

/// Drawn behind a stack, up to its edges.
struct Box {
    Color background;
    Color border;
    double borderWidth = 0;
    double cornerRadius = 0;

    friend bool operator==(const Box&, const Box&) = default;
};

/// Views one after the other, from left to right or from top to bottom. A hidden view takes no room, nor does the spacing
/// after it.
struct Stack {
    enum class Orientation { horizontal, vertical };
    /// Across the orientation.
    enum class Alignment { center, top, leading };

    Orientation orientation = Orientation::vertical;
    Alignment alignment = Alignment::leading;
    /// Between two views, unless the first has a `spacingAfter`.
    double spacing = 0;
    Insets insets;
    std::vector<View> views;
    /// With the insets. Absent where the views determine the width.
    std::optional<double> width = {};
    std::optional<Box> box = {};

    friend bool operator==(const Stack&, const Stack&);
};

/// A line of text, or a paragraph of fixed width that wraps its lines.
struct Label {
    AttributedText text;
    std::optional<double> wrapWidth;
    /// Added between the lines of a paragraph.
    double lineSpacing = 0;

    friend bool operator==(const Label&, const Label&) = default;
};

/// An image drawn at a size, keeping its proportions.
struct SizedImage {
    Image image;
    Size size;

    friend bool operator==(const SizedImage&, const SizedImage&) = default;
};

/// A button of the ledge: without a border, with an image, a title or both.
struct Button {
    /// Where the image stands relative to the title.
    enum class ImagePosition { none, only, leading };

    AttributedText title;
    std::optional<SizedImage> image;
    ImagePosition imagePosition = ImagePosition::none;
    /// Also what assistive programs call the button.
    std::string toolTip;
    std::optional<double> width = {};
    std::optional<double> height;
    /// Tells the buttons of one window apart; passed to the click handler.
    int tag = 0;

    friend bool operator==(const Button&, const Button&) = default;
};

/// A key that presses a button of the window that has the keyboard.
enum class KeyEquivalent { none, returnKey, escape };

/// A large button with rounded ends, as at the bottom of a dialogue. The button of the Return key looks like a default
/// button.
struct PushButton {
    std::string title;
    std::optional<Font> font = {};
    KeyEquivalent keyEquivalent = KeyEquivalent::none;
    /// In the accent colour.
    bool isProminent = false;
    std::optional<double> width = {};
    int tag = 0;

    friend bool operator==(const PushButton&, const PushButton&) = default;
};

/// A triangle that points down while it is on, that is, while what it discloses is shown. A click delivers the tag and does
/// not change the state: whoever describes the view does.
struct DisclosureTriangle {
    bool isOn = false;
    Font font;
    /// What assistive programs call the triangle.
    std::string accessibilityLabel;
    int tag = 0;

    friend bool operator==(const DisclosureTriangle&, const DisclosureTriangle&) = default;
};

/// Text that can be clicked.
struct TextButton {
    AttributedText title;
    std::string toolTip;
    /// Whether the pointer is a pointing hand over the whole button.
    bool isLink = false;
    int tag = 0;

    friend bool operator==(const TextButton&, const TextButton&) = default;
};

/// A picture drawn at a size, keeping its proportions, with rounded corners.
struct ImageView {
    Image image;
    Size size;
    double cornerRadius = 0;
    /// What assistive programs call the picture; empty for decoration.
    std::string accessibilityLabel;

    friend bool operator==(const ImageView&, const ImageView&) = default;
};

/// A thin horizontal line.
struct Separator {
    double width = 0;

    friend bool operator==(const Separator&, const Separator&) = default;
};

/// Empty space of a height, one point wide.
struct Spacer {
    double height = 0;

    friend bool operator==(const Spacer&, const Spacer&) = default;
};

/// Empty space that takes the spare room of its horizontal stack.
struct FlexibleSpace {
    friend bool operator==(const FlexibleSpace&, const FlexibleSpace&) = default;
};

/// Shows a part of content that is larger, with an overlaid scroller: a horizontal one that is always there, or a vertical
/// one that hides when all content is visible. Begins at the top left.
struct ScrollView {
    Size size;
    std::shared_ptr<const View> content;
    Stack::Orientation orientation = Stack::Orientation::horizontal;

    friend bool operator==(const ScrollView& a, const ScrollView& b);
};

/// The system's material for menus, with rounded corners, behind one view that fills it.
struct MenuBackground {
    double cornerRadius = 0;
    std::shared_ptr<const View> content;

    friend bool operator==(const MenuBackground& a, const MenuBackground& b);
};

struct View {
    std::variant<Stack, Label, Button, PushButton, DisclosureTriangle, TextButton, ImageView, Separator, Spacer,
                 FlexibleSpace, ScrollView, MenuBackground>
        content;
    bool isHidden = false;
    /// Between this view and the next one of its stack, in place of the stack's own spacing.
    std::optional<double> spacingAfter = {};

    friend bool operator==(const View&, const View&) = default;
};

inline bool operator==(const Stack& a, const Stack& b) {
    return a.orientation == b.orientation && a.alignment == b.alignment && a.spacing == b.spacing && a.insets == b.insets &&
           a.views == b.views && a.width == b.width && a.box == b.box;
}

inline bool operator==(const ScrollView& a, const ScrollView& b) {
    return a.size == b.size && *a.content == *b.content && a.orientation == b.orientation;
}

inline bool operator==(const MenuBackground& a, const MenuBackground& b) {
    return a.cornerRadius == b.cornerRadius && *a.content == *b.content;
}

}  // namespace ovin
