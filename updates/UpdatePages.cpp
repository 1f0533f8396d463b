#include "updates/UpdatePages.h"

#include <utility>
#include <vector>

namespace ovin::UpdatePages {
namespace {

constexpr Insets insets{20, 20, 20, 20};
constexpr double innerWidth = width - 40;
constexpr double iconSide = 64;
constexpr double gap = 14;
constexpr double textWidth = innerWidth - iconSide - gap;
constexpr Font titleFont{15, Font::Weight::semibold};
constexpr Font textFont{13, Font::Weight::regular};

View paragraph(std::string text, const Font& font) {
    return {Label{{{std::move(text), font, Color{SystemColor::label}}}, textWidth, 2}};
}

Stack row(std::vector<View> views) {
    Stack stack;
    stack.orientation = Stack::Orientation::horizontal;
    stack.alignment = Stack::Alignment::center;
    stack.spacing = gap;
    stack.views = std::move(views);
    return stack;
}

View column(std::vector<View> views, double spacing, Insets around = {}) {
    Stack stack;
    stack.spacing = spacing;
    stack.insets = around;
    stack.views = std::move(views);
    return {std::move(stack)};
}

View icon(double side, const Resources& resources) { return {ImageView{resources.applicationIcon(), {side, side}, 0, {}}}; }

View button(std::string title, Tag tag, KeyEquivalent key = KeyEquivalent::none, bool isProminent = false) {
    return {PushButton{std::move(title), {}, key, isProminent, {}, tag}};
}

std::string reason(FeedFailure failure) {
    switch (failure) {
        case FeedFailure::unreachable:
            return "The server cannot be reached. Check the connection to the internet, and try again later.";
        case FeedFailure::insecure:
            return "The server could not prove that it is the right one, or leads to an address that is not secure.";
        case FeedFailure::unusable:
            return "What the server sends cannot be understood. Try again later.";
    }
    return {};
}

}  // namespace

View offer(const std::string& version, const std::string& installed, const Resources& resources) {
    Stack header = row({icon(iconSide, resources), column({paragraph("A new version of Ovin is available", titleFont),
                                                           paragraph("You have Ovin " + installed + ", and Ovin " + version +
                                                                         " is out. Its web page says how to get it.",
                                                                     textFont)},
                                                          6)});
    Stack buttons = row({button("Skip This Version", skip),
                         {FlexibleSpace{}},
                         button("Later", later, KeyEquivalent::escape),
                         button("Open Web Page", open, KeyEquivalent::returnKey, true)});
    header.alignment = Stack::Alignment::top;
    header.width = innerWidth;
    buttons.width = innerWidth;
    return column({{std::move(header)}, {std::move(buttons)}}, gap, insets);
}

View reminder(const std::string& version, const Resources& resources) {
    Stack line = row({icon(iconSide / 2, resources),
                      {Label{{{"Ovin " + version + " is available", titleFont, Color{SystemColor::label}}}, {}}},
                      button("Later", later),
                      button("Show…", show)});
    line.insets = {12, 14, 12, 14};
    return {std::move(line)};
}

Alert upToDate(const std::string& installed) {
    return {"You’re up to date", "Ovin " + installed + " is the newest version there is."};
}

Alert failed(FeedFailure failure) { return {"Ovin could not look for updates", reason(failure)}; }

Alert noFeed() {
    return {"Ovin does not look for updates here",
            "This build does not know where they are announced. New versions come from where you got this one."};
}

}  // namespace ovin::UpdatePages
