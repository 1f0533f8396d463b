#include "info/AboutPage.h"

#include <string_view>
#include <utility>

#include "platform/Deployment.h"

namespace ovin {
namespace {

constexpr Size iconSize{64, 64};
constexpr Font nameFont{40, Font::Weight::bold};
constexpr Font textFont{17, Font::Weight::regular};
constexpr Font makerFont{17, Font::Weight::semibold};
constexpr double pageWidth = 388;
constexpr double rowWidth = 340;
constexpr double doneWidth = 82;
constexpr double spacing = 12;
constexpr Insets insets{34, 24, 20, 24};
constexpr double gapAfterVersion = 30;
constexpr double gapAfterSupport = 26;
constexpr double gapAfterSeparator = 26;
constexpr double gapAfterMaker = 8;
constexpr double gapAfterNews = 34;

View label(std::string text, const Font& font, SystemColor color) {
    return {Label{{{std::move(text), font, Color{color}}}, {}}};
}

View withGap(View view, double gap) {
    view.spacingAfter = gap;
    return view;
}

/// A stack of the window's spacing.
Stack stack(Stack::Orientation orientation, std::vector<View> views) {
    Stack stack;
    stack.orientation = orientation;
    stack.alignment = Stack::Alignment::center;
    stack.spacing = spacing;
    stack.views = std::move(views);
    return stack;
}

View header(const Resources& resources) {
    const auto picture = resources.picture("Ovin");
    return {stack(Stack::Orientation::horizontal,
                  {{ImageView{picture ? picture->image : resources.applicationIcon(), iconSize, 0, {}}},
                   label("Ovin", nameFont, SystemColor::label)})};
}

View buttons() {
    Stack row =
        stack(Stack::Orientation::horizontal,
              {{FlexibleSpace{}}, {PushButton{"Done", {}, KeyEquivalent::escape, false, doneWidth, AboutPage::doneTag}}});
    row.width = rowWidth;
    return {std::move(row)};
}

/// Makes links and remembers where they lead.
struct Links {
    std::vector<std::string> urls = {};

    View operator()(std::string_view title, std::string url) {
        TextButton link;
        link.title = {{std::string(title) + " ↗", textFont, Color{SystemColor::label}, true}};
        link.toolTip = url;
        link.isLink = true;
        link.tag = static_cast<int>(urls.size());
        urls.push_back(std::move(url));
        return {std::move(link)};
    }
};

}  // namespace

AboutPage aboutPage(const Resources& resources) {
    const std::string version = resources.infoString("CFBundleShortVersionString").value_or("?");
    const std::string build = resources.infoString("CFBundleVersion").value_or("?");
    const std::string site(deployment::siteURL);
    const std::string support = "mailto:" + std::string(deployment::supportAddress) + "?subject=Ovin%20" + version;

    Links link;
    std::vector<View> views{
        header(resources),
        withGap(label("Version " + version + " (" + build + ")", textFont, SystemColor::secondaryLabel), gapAfterVersion),
        link(deployment::siteDomain, site),
        withGap(link("Contact support", support), gapAfterSupport),
        withGap({Separator{rowWidth}}, gapAfterSeparator),
        withGap(label("Made by Vorda", makerFont, SystemColor::label), gapAfterMaker),
        link("Discover more at " + std::string(deployment::makerDomain), std::string(deployment::makerURL)),
        withGap(link("Get the occasional email", site + "#news"), gapAfterNews),
        buttons(),
    };
    Stack column = stack(Stack::Orientation::vertical, std::move(views));
    column.insets = insets;
    column.width = pageWidth;
    return {{std::move(column)}, std::move(link.urls)};
}

}  // namespace ovin
