#include "info/GuidePage.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "info/PageText.h"

namespace ovin {
namespace {

constexpr double pageWidth = 480;
constexpr Insets pageInsets{4, 32, 24, 32};
constexpr double pageSpacing = 10;
constexpr double textWidth = 416;
constexpr double textSize = 14;
constexpr double captionSize = 12;
constexpr double lineSpacing = 3;
constexpr Font headingFont{17, Font::Weight::bold};
constexpr double headingGap = 12;
constexpr double closingGap = 8;
constexpr double pictureCornerRadius = 6;
constexpr Size iconSize{56, 56};
constexpr Font titleFont{28, Font::Weight::bold};
constexpr double headerSpacing = 12;
constexpr double buttonRowWidth = 432;
constexpr double buttonSpacing = 10;
constexpr Insets columnInsets{30, 0, 18, 0};
constexpr double gapAfterHeader = 18;
constexpr double gapAfterSeparator = 16;

View paragraph(std::string_view text) {
    return {Label{markedText(text, textSize, SystemColor::label), textWidth, lineSpacing}};
}

View smallParagraph(std::string_view text) {
    return {Label{markedText(text, captionSize, SystemColor::secondaryLabel), textWidth, lineSpacing}};
}

/// The caption says what the picture shows.
std::optional<ImageView> pictureView(const std::optional<Picture>& picture) {
    if (!picture || !(picture->size.width > 0)) return std::nullopt;
    const double height = textWidth * picture->size.height / picture->size.width;
    return ImageView{picture->image, {textWidth, height}, pictureCornerRadius, {}};
}

std::vector<View> pageViews(const Resources& resources) {
    std::vector<View> views;
    for (const GuidePiece& piece : resources.words().guide) {
        switch (piece.kind) {
            case GuidePiece::Kind::heading:
                views.push_back({Spacer{views.empty() ? 0 : headingGap}});
                views.push_back({Label{{{piece.text, headingFont, Color{SystemColor::label}}}, {}}});
                break;
            case GuidePiece::Kind::paragraph:
                views.push_back(paragraph(piece.text));
                break;
            case GuidePiece::Kind::picture:
                if (auto view = pictureView(resources.picture(piece.picture))) views.push_back({*std::move(view)});
                views.push_back(smallParagraph(piece.text));
                break;
            case GuidePiece::Kind::closing:
                views.push_back({Spacer{closingGap}});
                views.push_back(smallParagraph(piece.text));
                break;
        }
    }
    return views;
}

Stack row(double spacing) {
    Stack row;
    row.orientation = Stack::Orientation::horizontal;
    row.alignment = Stack::Alignment::center;
    row.spacing = spacing;
    return row;
}

View header(const Resources& resources) {
    const auto picture = resources.picture("Ovin");
    Stack header = row(headerSpacing);
    header.views = {{ImageView{picture ? picture->image : resources.applicationIcon(), iconSize, 0, {}}},
                    {Label{{{"How Ovin works", titleFont, Color{SystemColor::label}}}, {}}}};
    return {std::move(header), false, gapAfterHeader};
}

View buttons(bool isOrganizing) {
    PushButton done{"Done", {}, KeyEquivalent::escape, false, {}, static_cast<int>(GuideButton::done)};
    if (isOrganizing) done.keyEquivalent = KeyEquivalent::returnKey;
    Stack buttons = row(buttonSpacing);
    buttons.width = buttonRowWidth;
    buttons.views = {{FlexibleSpace{}}, {std::move(done)}};
    if (!isOrganizing) {
        buttons.views.push_back({PushButton{
            "Organize Menu Bar…", {}, KeyEquivalent::returnKey, false, {}, static_cast<int>(GuideButton::organize)}});
    }
    return {std::move(buttons)};
}

}  // namespace

View guidePage(const Resources& resources) {
    Stack page;
    page.orientation = Stack::Orientation::vertical;
    page.alignment = Stack::Alignment::leading;
    page.spacing = pageSpacing;
    page.insets = pageInsets;
    page.width = pageWidth;
    page.views = pageViews(resources);
    return {std::move(page)};
}

View guideContent(const Resources& resources, View page, double scrollHeight, bool isOrganizing) {
    const ScrollView scroll{
        {pageWidth, scrollHeight}, std::make_shared<const View>(std::move(page)), Stack::Orientation::vertical};
    Stack column;
    column.orientation = Stack::Orientation::vertical;
    column.alignment = Stack::Alignment::center;
    column.insets = columnInsets;
    column.views = {header(resources),
                    {Separator{pageWidth}, false, gapAfterSeparator},
                    {scroll},
                    {Separator{pageWidth}, false, gapAfterSeparator},
                    buttons(isOrganizing)};
    return {std::move(column)};
}

}  // namespace ovin
