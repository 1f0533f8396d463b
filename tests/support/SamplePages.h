#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Views.h"

/// Pages like those that programs really show, and one with every kind of view.
namespace ovin::SamplePages {

enum Tag { done = 1, more, cancel, site, licence, disclose, choose, item };

inline Font font(double size, Font::Weight weight = Font::Weight::regular) { return {size, weight}; }

inline View row(std::vector<View> views, double spacing = 12, std::optional<double> width = {}) {
    Stack stack;
    stack.orientation = Stack::Orientation::horizontal;
    stack.alignment = Stack::Alignment::center;
    stack.spacing = spacing;
    stack.views = std::move(views);
    stack.width = width;
    return {std::move(stack)};
}

inline Stack column(std::vector<View> views, double spacing, Insets insets = {}) {
    Stack stack;
    stack.spacing = spacing;
    stack.insets = insets;
    stack.views = std::move(views);
    return stack;
}

inline View line(const std::string& text, Font textFont, SystemColor color = SystemColor::label) {
    return {Label{{{text, textFont, Color{color}}}, {}}};
}

/// A header and 22 paragraphs, in a scroller of `height`, above a row of buttons.
inline View guide(const Image& icon, double height) {
    constexpr double textWidth = 416;
    const Font plain = font(14);
    const Font bold = font(14, Font::Weight::bold);
    std::vector<View> views{
        row({{ImageView{icon, {56, 56}, 12, "Icon"}}, line("The guide", font(28, Font::Weight::bold))}, 14)};
    views.front().spacingAfter = 20;
    for (int number = 1; number <= 22; ++number) {
        views.push_back({Label{{{"Paragraph " + std::to_string(number) + ". ", bold, {}},
                                {"Items that the bar has no room for are shown in a row below it. Point at the ", plain, {}},
                                {"tilted square", bold, Color{SystemColor::systemOrange}},
                                {", click it, and the row opens; click anything else, and it closes. ", plain, {}},
                                {"Grüße & <b>no mark-up</b>.", plain, Color{SystemColor::secondaryLabel}}},
                               textWidth,
                               3}});
    }
    const auto page = std::make_shared<const View>(View{column(std::move(views), 12, {24, 32, 24, 32})});
    View buttons = row({{FlexibleSpace{}},
                        {PushButton{"More…", {}, KeyEquivalent::none, false, {}, more}},
                        {PushButton{"Done", {}, KeyEquivalent::returnKey, true, 110.0, done}}},
                       12, textWidth + 64);
    std::get<Stack>(buttons.content).insets = {14, 32, 18, 32};
    return {column({{ScrollView{{textWidth + 64, height}, page, Stack::Orientation::vertical}},
                    {Separator{textWidth + 64}},
                    std::move(buttons)},
                   0)};
}

inline View about(const Image& icon) {
    const Font linkFont = font(17);
    Stack stack =
        column({{ImageView{icon, {128, 128}, 0, "Icon"}},
                line("The program", font(22, Font::Weight::semibold)),
                line("Version 0.1.0 (1)", font(12), SystemColor::secondaryLabel),
                row({{TextButton{{{"Web site", linkFont, Color{SystemColor::controlAccent}, true}},
                                 "https://example.org/?a=1&b=<2>",
                                 true,
                                 site}},
                     {TextButton{{{"Licence", linkFont, Color{SystemColor::controlAccent}, true}}, "", true, licence}}},
                    24)},
               8, {24, 60, 28, 60});
    stack.alignment = Stack::Alignment::center;
    stack.views[0].spacingAfter = 14;
    stack.views[2].spacingAfter = 18;
    return {std::move(stack)};
}

/// A card whose lengths are `scale` times those of a small one; expanded, it has a bordered box.
inline View card(double scale, bool isExpanded) {
    const double width = 440 * scale;
    const Font plain = font(13 * scale);
    Stack box = column({{Label{{{"Hold ", plain, {}},
                                {"⌘", font(13 * scale, Font::Weight::semibold), {}},
                                {" and drag an icon along the bar; those on the left are hidden first.", plain, {}}},
                               width - 28 * scale,
                               3 * scale}}},
                       6 * scale, {12 * scale, 14 * scale, 12 * scale, 14 * scale});
    box.box = Box{{SystemColor::label, 0.05}, {SystemColor::separator}, 1, 8 * scale};
    box.width = width;
    View boxed{std::move(box), !isExpanded};
    return {
        column({row({{DisclosureTriangle{isExpanded, font(13 * scale), "Details", disclose}},
                     line("Drag the icons", font(15 * scale, Font::Weight::semibold))},
                    6 * scale),
                {Label{{{"Every icon that is found is on the bar now. Put them into the order that you like best, from the "
                         "right to the left.",
                         plain, Color{SystemColor::secondaryLabel}}},
                       width,
                       2 * scale}},
                std::move(boxed),
                row({{FlexibleSpace{}},
                     {PushButton{"Cancel", plain, KeyEquivalent::escape, false, {}, cancel}},
                     {PushButton{"Done", plain, KeyEquivalent::returnKey, true, {}, done}}},
                    10 * scale, width)},
               12 * scale, {16 * scale, 20 * scale, 16 * scale, 20 * scale})};
}

/// Every kind of view.
inline View everything(const Image& icon) {
    Button itemButton;
    itemButton.title = {{"Item", font(10), {}}};
    itemButton.image = SizedImage{icon, {22, 22}};
    itemButton.imagePosition = Button::ImagePosition::leading;
    itemButton.toolTip = "An item";
    itemButton.height = 28;
    itemButton.tag = item;
    Stack box = column({line("A box with a border", font(13, Font::Weight::medium)),
                        {Label{{{"Text of ", {}, {}},
                                {"several ", font(17, Font::Weight::bold), {}},
                                {"kinds: ", {}, {}},
                                {"orange", {}, Color{SystemColor::systemOrange}},
                                {", ", {}, {}},
                                {"underlined", {}, {}, true},
                                {", & <i>plain</i>.\nAnd a new line.", {}, {}}},
                               300,
                               2}}},
                       6, {12, 14, 12, 14});
    box.box = Box{{SystemColor::controlAccent, 0.1}, {SystemColor::controlAccent, 0.6}, 1.5, 10};
    box.width = 328;
    const auto menu = std::make_shared<const View>(row({{itemButton}, {itemButton}}, 4));
    Stack menuRow = std::get<Stack>(menu->content);
    menuRow.insets = {6, 10, 6, 10};
    std::vector<View> steps;
    for (int number = 1; number < 9; ++number) steps.push_back(line("Line " + std::to_string(number), font(12)));
    const auto list = std::make_shared<const View>(View{column(std::move(steps), 4, {8, 10, 8, 10})});
    Stack listBox = column({{ScrollView{{326, 70}, list, Stack::Orientation::vertical}}}, 0, {1, 1, 1, 1});
    listBox.box = Box{{SystemColor::clear}, {SystemColor::separator}, 1, 6};
    return {
        column({row({{ImageView{icon, {56, 56}, 0, "Icon"}},
                     {ImageView{icon, {40, 24}, 4, ""}},
                     line("All kinds", font(28, Font::Weight::bold))}),
                {std::move(box)},
                {Label{{{"Hidden"}}, {}}, true, 50.0},
                row({{DisclosureTriangle{false, font(13), "Closed", disclose}},
                     {DisclosureTriangle{true, font(13), "Open", disclose}},
                     {TextButton{{{"A link", {}, Color{SystemColor::controlAccent}, true}}, "Where it leads", true, site}},
                     {TextButton{{{"Text to press", {}, {}}}, "", false, more}}}),
                {Separator{328}},
                {MenuBackground{10, std::make_shared<const View>(View{menuRow})}},
                {std::move(listBox), false, 16.0},
                row({{PushButton{"Plain", {}, KeyEquivalent::escape, false, {}, cancel}},
                     {FlexibleSpace{}},
                     {PushButton{"Default", {}, KeyEquivalent::returnKey, false, {}, choose}},
                     {PushButton{"Prominent", {}, KeyEquivalent::none, true, {}, done}}},
                    10, 328),
                {Spacer{4}}},
               12, {20, 24, 16, 24})};
}

}  // namespace ovin::SamplePages
