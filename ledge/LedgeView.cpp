#include "ledge/LedgeView.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace ovin {
namespace {

constexpr Insets rowInsets{6, 10, 6, 10};
constexpr double rowSpacing = 12;
constexpr double buttonSpacing = 4;
constexpr double buttonHeight = 28;
constexpr double iconButtonWidth = 28;
constexpr Size iconSize{22, 22};
constexpr Font labelFont{10, Font::Weight::regular};
constexpr double cornerRadius = 10;
/// How many characters of its name an application without an icon is shown by.
constexpr std::size_t initials = 2;

std::string toolTip(const DiscoveredItem& item) {
    const bool addsTitle = !item.title.empty() && item.title != item.appName;
    return addsTitle ? item.appName + " — " + item.title : item.appName;
}

Button button(const Text& text, const DiscoveredItem& item, std::size_t index) {
    Button button;
    button.toolTip = toolTip(item);
    button.tag = static_cast<int>(index);
    button.height = buttonHeight;
    if (item.appIcon) button.image = SizedImage{*item.appIcon, iconSize};
    if (item.label) {
        button.title = {{*item.label, labelFont, {}}};
        if (item.appIcon) button.imagePosition = Button::ImagePosition::leading;
    } else if (item.appIcon) {
        button.imagePosition = Button::ImagePosition::only;
        button.width = iconButtonWidth;
    } else {
        button.title = {{text.prefix(item.appName, initials), {}, {}}};
    }
    return button;
}

View message(std::string_view text) { return {Label{{{std::string(text), {}, Color{SystemColor::secondaryLabel}}}, {}}}; }

View buttons(const Text& text, const std::vector<DiscoveredItem>& items) {
    Stack row;
    row.orientation = Stack::Orientation::horizontal;
    row.alignment = Stack::Alignment::center;
    row.spacing = buttonSpacing;
    for (std::size_t index = 0; index < items.size(); ++index) row.views.push_back({button(text, items[index], index)});
    return {std::move(row)};
}

Button menuButton(const Image& icon) {
    Button button;
    button.toolTip = "Ovin";
    button.tag = ledgeMenuTag;
    button.height = buttonHeight;
    button.width = iconButtonWidth;
    button.image = SizedImage{icon, iconSize};
    button.imagePosition = Button::ImagePosition::only;
    return button;
}

}  // namespace

View ledgeRow(const Text& text, const std::vector<DiscoveredItem>& items, std::string_view whenEmpty,
              const std::optional<Image>& menuIcon) {
    Stack row;
    row.orientation = Stack::Orientation::horizontal;
    row.alignment = menuIcon ? Stack::Alignment::center : Stack::Alignment::top;
    row.spacing = rowSpacing;
    row.insets = rowInsets;
    row.views.push_back(items.empty() ? message(whenEmpty) : buttons(text, items));
    if (menuIcon) row.views.push_back({menuButton(*menuIcon)});
    return {std::move(row)};
}

LedgeContent ledgeContent(View row, Size fittingSize, double maximumWidth) {
    auto content = std::make_shared<const View>(std::move(row));
    Size size = fittingSize;
    if (fittingSize.width > maximumWidth) {
        size.width = maximumWidth;
        content = std::make_shared<const View>(View{ScrollView{size, std::move(content)}});
    }
    return {View{MenuBackground{cornerRadius, std::move(content)}}, size};
}

}  // namespace ovin
