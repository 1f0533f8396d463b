#include "info/GuidePage.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "info/PageText.h"
#include "platform/Deployment.h"

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

View paragraph(std::string_view text, double size = textSize, SystemColor color = SystemColor::label) {
    return {Label{markedText(text, size, color), textWidth, lineSpacing}};
}

/// Collects the page's views.
class Page {
public:
    explicit Page(const Resources& resources) : resources_(resources) {}

    Page& heading(std::string_view text) {
        views_.push_back({Spacer{views_.empty() ? 0 : headingGap}});
        views_.push_back({Label{{{std::string(text), headingFont, Color{SystemColor::label}}}, {}}});
        return *this;
    }

    Page& text(std::string_view text) {
        views_.push_back(paragraph(text));
        return *this;
    }

    Page& picture(std::string_view name, std::string_view caption) {
        const auto picture = resources_.picture(name);
        if (picture && picture->size.width > 0) {
            const double height = textWidth * picture->size.height / picture->size.width;
            // The caption says what the picture shows.
            views_.push_back({ImageView{picture->image, {textWidth, height}, pictureCornerRadius, {}}});
        }
        views_.push_back(paragraph(caption, captionSize, SystemColor::secondaryLabel));
        return *this;
    }

    Page& closing(std::string_view text) {
        views_.push_back({Spacer{closingGap}});
        views_.push_back(paragraph(text, captionSize, SystemColor::secondaryLabel));
        return *this;
    }

    [[nodiscard]] std::vector<View> views() const { return views_; }

private:
    const Resources& resources_;
    std::vector<View> views_;
};

std::vector<View> pageViews(const Resources& resources) {
    const std::string permission =
        "Ovin needs one permission, **Accessibility**, to find the icons macOS isn’t drawing and to open their menus for "
        "you. It doesn’t record your screen, never moves or clicks anything on its own, and collects nothing about you. "
        "Once a day it checks " +
        std::string(deployment::siteDomain) + " for a newer version, and asks before installing one.";
    return Page(resources)
        .heading("Your menu bar is full.")
        .text(
            "macOS 27 draws as many menu bar icons as it can fit, starting from the clock, and tucks the rest behind a "
            "little « on the left.")
        .picture("explainer-collapsed", "Collapsed: only the icons that fit.")
        .text("Click the « and the extras appear over your app’s menus, as many as your screen has room for.")
        .picture("explainer-expanded", "Expanded: the rest, if there’s space. Often there isn’t.")
        .text(
            "With enough icons, some are left over entirely. They’re still running; you just can’t see them, click them, or "
            "drag them anywhere. Rather like a sock behind the radiator.")
        .heading("Why Ovin doesn’t hide or move icons.")
        .text(
            "Menu bar managers used to shuffle icons about behind the scenes, hiding some and promoting others. In macOS "
            "27, Apple rebuilt the menu bar, and those tricks no longer work reliably.")
        .text(
            "We’d rather not promise what macOS won’t let us keep. So Ovin does the two things that do work, and does them "
            "properly.")
        .heading("The ledge.")
        .text(
            "**Click Ovin’s icon** and every icon macOS couldn’t fit lines up in a row underneath the menu bar. Click one "
            "and its menu opens, as if it had been in the bar all along.")
        .text("Click Ovin again, or anywhere else, to put the ledge away.")
        .heading("Deciding who gets the good seats.")
        .text(
            "macOS keeps the icons nearest the clock and lets the leftmost ones spill over, so the order of your icons "
            "decides which stay in view. You’d normally **⌘-drag** them into order, but you can’t drag what you can’t see. "
            "So:")
        .text(
            "**1.** Choose **Organize Menu Bar…** from Ovin’s menu. Ovin switches your display to a higher resolution, "
            "which gives the menu bar room to draw every icon. Everything gets smaller for a moment. That’s expected, and "
            "temporary.")
        .text(
            "**2.** Hold **⌘** and drag your favourites towards the clock. Drag the ones you can live without to the left.")
        .text(
            "**3.** Click **Done**. Your usual resolution comes back, and your new order stays put. Anything that still "
            "doesn’t fit is waiting on the ledge.")
        .heading("Good manners.")
        .text(permission)
        .text("If Ovin is interrupted while organizing, it puts your resolution back the next time it opens.")
        .closing("Control-click Ovin’s icon for its menu. This page lives there too, under How This Works.")
        .views();
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
