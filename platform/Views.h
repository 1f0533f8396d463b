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

/// What windows show, as plain values: the logic describes it, a world draws it with its toolkit's own views and layout.
/// Lengths are points.
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

/// What lies behind a stack, filling it up to its edges.
struct Box {
    Color background;
    Color border;
    double borderWidth = 0;
    double cornerRadius = 0;

    friend bool operator==(const Box&, const Box&) = default;
};

/// Views one after the other, from left to right or from top to bottom. Hidden ones take no room, nor does the spacing after
/// them.
struct Stack {
    enum class Orientation { horizontal, vertical };
    /// Across the orientation.
    enum class Alignment { center, top, leading };

    Orientation orientation = Orientation::vertical;
    Alignment alignment = Alignment::leading;
    /// Between two views, but for those that ask for another one.
    double spacing = 0;
    Insets insets;
    std::vector<View> views;
    /// Insets included. Absent where the views decide.
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
    /// Where the image stands with regard to the title.
    enum class ImagePosition { none, only, leading };

    AttributedText title;
    std::optional<SizedImage> image;
    ImagePosition imagePosition = ImagePosition::none;
    /// Also what assistive programs call the button.
    std::string toolTip;
    std::optional<double> width = {};
    std::optional<double> height;
    /// Tells the buttons of one window apart; delivered with the click.
    int tag = 0;

    friend bool operator==(const Button&, const Button&) = default;
};

/// A key that presses a button of the window that has the keyboard.
enum class KeyEquivalent { none, returnKey, escape };

/// A large button with rounded ends, as at the bottom of a dialogue. The one for the Return key looks like the default
/// button that it is.
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

/// A triangle that points down while it is on, and what it discloses is shown. A click delivers the tag and leaves the state
/// to whoever describes the view.
struct DisclosureTriangle {
    bool isOn = false;
    Font font;
    /// What assistive programs call it.
    std::string accessibilityLabel;
    int tag = 0;

    friend bool operator==(const DisclosureTriangle&, const DisclosureTriangle&) = default;
};

/// Text that can be clicked.
struct TextButton {
    AttributedText title;
    std::string toolTip;
    /// The pointer is a pointing hand over all of it.
    bool isLink = false;
    int tag = 0;

    friend bool operator==(const TextButton&, const TextButton&) = default;
};

/// A picture drawn at a size, keeping its proportions, with its corners cut off round.
struct ImageView {
    Image image;
    Size size;
    double cornerRadius = 0;
    /// What assistive programs say of it; empty for decoration.
    std::string accessibilityLabel;

    friend bool operator==(const ImageView&, const ImageView&) = default;
};

/// A thin horizontal line.
struct Separator {
    double width = 0;

    friend bool operator==(const Separator&, const Separator&) = default;
};

/// Nothing, of a height. A point wide.
struct Spacer {
    double height = 0;

    friend bool operator==(const Spacer&, const Spacer&) = default;
};

/// Nothing, as long as its horizontal stack has room to spare.
struct FlexibleSpace {
    friend bool operator==(const FlexibleSpace&, const FlexibleSpace&) = default;
};

/// A window onto content that is larger, with scrollers that overlay it: sideways ones that are always there, or upright
/// ones that hide when everything is seen. It begins at the top left.
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
