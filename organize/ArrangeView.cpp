#include "organize/ArrangeView.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace ovin {
namespace {

constexpr const char* fitWarning =
    "Even at this display’s widest resolution, a few items still don’t fit. Organize the ones you can see; the rest stay on "
    "Ovin’s row.";
constexpr const char* farewell = "Click Done when you’ve organized your items the way you want.";
constexpr const char* question = "How does this work?";

/// The gesture, set off from the text around it.
constexpr std::string_view emphasised = "⌘-drag";

constexpr double textWidth = 440;
constexpr double textSize = 13;
constexpr Insets contentInsets{38, 26, 20, 26};
constexpr double cardInset = 14;
constexpr double cardTextWidth = textWidth - 2 * cardInset;
constexpr double cardTextSize = 12;
constexpr double cardBackgroundAlpha = 0.08;
constexpr double pictureCornerRadius = 5;

Insets scaled(const Insets& insets, double scale) {
    return {insets.top * scale, insets.left * scale, insets.bottom * scale, insets.right * scale};
}

Label makeFitWarning(double scale) {
    Label label = arrangeParagraph(fitWarning, textSize * scale, textWidth * scale);
    for (TextRun& run : label.text) run.color = Color{SystemColor::systemOrange};
    return label;
}

std::optional<ImageView> barImage(const std::optional<Picture>& picture, double width) {
    if (!picture || !(picture->size.width > 0)) return std::nullopt;
    return ImageView{picture->image, {width, width * picture->size.height / picture->size.width}, pictureCornerRadius, {}};
}

Stack header(const ArrangeContent& content) {
    const double s = content.scale;
    DisclosureTriangle disclosure{
        content.isCardExpanded, {textSize * s, Font::Weight::medium}, question, static_cast<int>(ArrangeButton::disclosure)};
    TextButton label;
    label.title = {{question, Font{textSize * s, Font::Weight::bold}, Color{SystemColor::label}}};
    label.tag = static_cast<int>(ArrangeButton::howDoesThisWork);

    Stack row;
    row.orientation = Stack::Orientation::horizontal;
    row.alignment = Stack::Alignment::center;
    row.spacing = 4 * s;
    row.views = {{std::move(disclosure)}, {std::move(label)}};
    return row;
}

Stack card(const Words& words, const ArrangeContent& content) {
    const double s = content.scale;
    Stack card;
    card.spacing = 10 * s;
    card.insets = scaled({cardInset, cardInset, cardInset, cardInset}, s);
    card.box = Box{{SystemColor::quaternaryLabel, cardBackgroundAlpha}, {SystemColor::separator}, 1, 10 * s};

    const auto addParagraph = [&](const std::string& text) {
        if (text.empty()) return;
        card.views.push_back({arrangeParagraph(text, cardTextSize * s, cardTextWidth * s)});
    };
    const auto addPicture = [&](const std::optional<Picture>& picture) {
        if (auto image = barImage(picture, cardTextWidth * s)) card.views.push_back({*std::move(image)});
    };
    addParagraph(words.aboutCollapsed);
    addPicture(content.collapsedPicture);
    addParagraph(words.aboutExpanded);
    addPicture(content.expandedPicture);
    addParagraph(words.aboutWidening);
    return card;
}

PushButton doneButton(double scale) {
    PushButton button;
    button.title = "Done";
    button.font = Font{14 * scale, Font::Weight::medium};
    button.keyEquivalent = KeyEquivalent::returnKey;
    button.isProminent = true;
    button.tag = static_cast<int>(ArrangeButton::done);
    return button;
}

}  // namespace

Label arrangeParagraph(std::string_view text, double size, double width) {
    Label label;
    label.wrapWidth = width;
    const auto add = [&](std::string_view run, Font::Weight weight, SystemColor color) {
        if (!run.empty()) label.text.push_back({std::string(run), Font{size, weight}, Color{color}});
    };
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t found = std::min(text.find(emphasised, start), text.size());
        add(text.substr(start, found - start), Font::Weight::regular, SystemColor::secondaryLabel);
        add(text.substr(found, emphasised.size()), Font::Weight::bold, SystemColor::label);
        start = found + emphasised.size();
    }
    return label;
}

View arrangeView(const Words& words, const ArrangeContent& content) {
    const double s = content.scale;
    Stack stack;
    stack.spacing = 12 * s;
    stack.insets = scaled(contentInsets, s);
    stack.width = textWidth * s + (contentInsets.left + contentInsets.right) * s;

    stack.views.push_back({Label{{{"Organize your menu bar", Font{17 * s, Font::Weight::semibold}, {}}}, {}}});
    stack.views.push_back({arrangeParagraph(words.introduction, textSize * s, textWidth * s)});
    if (content.hasFitWarning) stack.views.push_back({makeFitWarning(s)});
    stack.views.push_back({header(content)});
    stack.views.push_back({card(words, content), !content.isCardExpanded});
    stack.views.push_back({arrangeParagraph(farewell, textSize * s, textWidth * s), false, 16 * s});
    stack.views.push_back({doneButton(s)});
    return {std::move(stack)};
}

}  // namespace ovin
