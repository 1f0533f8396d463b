#include "updates/UpdatePages.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "updates/NotesText.h"
#include "updates/UpdateChoice.h"

namespace ovin::UpdatePages {
namespace {

constexpr Insets insets{20, 20, 20, 20};
constexpr double innerWidth = width - 40;
constexpr double iconSide = 64;
constexpr double gap = 14;
constexpr double textWidth = innerWidth - iconSide - gap;
constexpr double highestNotes = 220;
constexpr double notesInset = 12;
constexpr double frameWidth = 1;
constexpr double frameRadius = 6;
constexpr double notesWidth = innerWidth - 2 * (notesInset + frameWidth);
constexpr double bulletWidth = 14;
constexpr double barHeight = 8;
constexpr double buttonWidth = 96;
constexpr Font titleFont{15, Font::Weight::semibold};
constexpr Font textFont{13, Font::Weight::regular};
constexpr Font headingFont{13, Font::Weight::semibold};

View paragraph(std::string text, const Font& font, double wrapWidth, SystemColor color = SystemColor::label) {
    return {Label{{{std::move(text), font, Color{color}}}, wrapWidth, 2}};
}

View row(std::vector<View> views, Stack::Alignment alignment = Stack::Alignment::center) {
    Stack stack;
    stack.orientation = Stack::Orientation::horizontal;
    stack.alignment = alignment;
    stack.spacing = gap;
    stack.width = innerWidth;
    stack.views = std::move(views);
    return {std::move(stack)};
}

View column(std::vector<View> views, double spacing, Insets around = {}) {
    Stack stack;
    stack.spacing = spacing;
    stack.insets = around;
    stack.views = std::move(views);
    return {std::move(stack)};
}

View page(std::vector<View> views) { return column(std::move(views), gap, insets); }

/// The icon, and beside it a title above something else.
View header(std::string title, View below, const Resources& resources) {
    return row({{ImageView{resources.applicationIcon(), {iconSide, iconSide}, 0, {}}},
                column({paragraph(std::move(title), titleFont, textWidth), std::move(below)}, 6),
                {FlexibleSpace{}}},
               Stack::Alignment::top);
}

View button(std::string title, Tag tag, KeyEquivalent key = KeyEquivalent::none, bool isProminent = false) {
    return {PushButton{std::move(title), {}, key, isProminent, {}, tag}};
}

View cancelButton() { return {PushButton{"Cancel", {}, KeyEquivalent::escape, false, buttonWidth, cancel}}; }

/// A bullet beside a text, so that all lines of the text begin below each other.
View listItem(std::string text) {
    Stack bullet;
    bullet.orientation = Stack::Orientation::horizontal;
    bullet.width = bulletWidth;
    bullet.views = {{Label{{{"•", textFont, Color{SystemColor::label}}}, {}, 2}}};
    Stack item;
    item.orientation = Stack::Orientation::horizontal;
    item.alignment = Stack::Alignment::top;
    item.views = {{std::move(bullet)}, paragraph(std::move(text), textFont, notesWidth - bulletWidth)};
    return {std::move(item)};
}

View notesView(NotesParagraph piece) {
    switch (piece.kind) {
        case NotesParagraph::Kind::heading:
            return paragraph(std::move(piece.text), headingFont, notesWidth);
        case NotesParagraph::Kind::listItem:
            return listItem(std::move(piece.text));
        case NotesParagraph::Kind::text:
            break;
    }
    return paragraph(std::move(piece.text), textFont, notesWidth);
}

/// The notes in a frame, as high as they are and `highestNotes` at most.
View framed(View notes, double height) {
    auto content = std::make_shared<const View>(std::move(notes));
    const Size size{innerWidth - 2 * frameWidth, std::min(height, highestNotes)};
    Stack frame = std::get<Stack>(column({{ScrollView{size, std::move(content), Stack::Orientation::vertical}}}, 0,
                                         {frameWidth, frameWidth, frameWidth, frameWidth})
                                      .content);
    frame.box = Box{Color{SystemColor::clear}, Color{SystemColor::separator}, frameWidth, frameRadius};
    return {std::move(frame)};
}

bool isWebPage(const std::string& url) { return url.starts_with("https://"); }

/// A bar of which a part is filled.
View bar(double part) {
    Stack filled;
    filled.orientation = Stack::Orientation::horizontal;
    filled.width = std::max(barHeight, part * textWidth);
    filled.box = Box{Color{SystemColor::controlAccent}, Color{SystemColor::controlAccent}, 0, barHeight / 2};
    filled.views = {{Spacer{barHeight}}};
    Stack whole;
    whole.orientation = Stack::Orientation::horizontal;
    whole.width = textWidth;
    whole.box = Box{Color{SystemColor::separator}, Color{SystemColor::separator}, 0, barHeight / 2};
    whole.views = {{std::move(filled)}, {FlexibleSpace{}}};
    return {std::move(whole)};
}

/// In megabytes with one digit after the point.
std::string megabytes(std::uint64_t bytes) {
    const std::uint64_t tenths = bytes / 100000;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

}  // namespace

std::optional<View> notesOf(const FeedItem& item) {
    std::vector<View> views;
    for (NotesParagraph& piece : notesParagraphs(item.notes, item.areNotesPlain)) {
        const bool isHeading = piece.kind == NotesParagraph::Kind::heading;
        if (isHeading && !views.empty()) views.back().spacingAfter = gap;
        views.push_back(notesView(std::move(piece)));
    }
    if (views.empty()) return std::nullopt;
    return column(std::move(views), 6, {notesInset, notesInset, notesInset, notesInset});
}

View offer(const Offer& offer, const Resources& resources) {
    const std::string version = shownVersion(offer.item);
    std::vector<View> views{header("A new version of Ovin is available",
                                   paragraph("Ovin " + version + " is available; you have " + offer.installed +
                                                 ". Would you like to download and install it?",
                                             textFont, textWidth),
                                   resources)};
    if (auto notes = notesOf(offer.item)) views.push_back(framed(std::move(*notes), offer.notesHeight));
    if (isWebPage(offer.item.notesLink)) {
        views.push_back({TextButton{
            {{"All release notes ↗", textFont, Color{SystemColor::label}, true}}, offer.item.notesLink, true, Tag::notes}});
    }
    std::vector<View> buttons;
    if (offer.canBeSkipped) buttons.push_back(button("Skip This Version", skip));
    buttons.push_back({FlexibleSpace{}});
    buttons.push_back(button("Later", later, KeyEquivalent::escape));
    buttons.push_back(button("Install", install, KeyEquivalent::returnKey, true));
    views.push_back(row(std::move(buttons)));
    return page(std::move(views));
}

View looking(const Resources& resources) {
    return page({header("Looking for updates…", {Spacer{barHeight}}, resources), row({{FlexibleSpace{}}, cancelButton()})});
}

View downloading(const std::string& version, std::uint64_t received, std::uint64_t length, const Resources& resources) {
    // In hundredths, for the text too: each other page is laid out anew and read out to those who do not see it.
    const double hundredths =
        length == 0 ? 0 : std::floor(static_cast<double>(received) / static_cast<double>(length) * 100);
    const auto shown = static_cast<std::uint64_t>(static_cast<double>(length) / 100 * hundredths);
    View amounts = column({bar(hundredths / 100), paragraph(megabytes(shown) + " of " + megabytes(length) + " MB", textFont,
                                                            textWidth, SystemColor::secondaryLabel)},
                          6);
    return page({header("Downloading Ovin " + version + "…", std::move(amounts), resources),
                 row({{FlexibleSpace{}}, cancelButton()})});
}

View installing(const std::string& version, const Resources& resources) {
    return page({header("Installing Ovin " + version + "…",
                        paragraph("The download is checked before it is installed.", textFont, textWidth), resources)});
}

View installed(const std::string& version, const Resources& resources) {
    return page({header("Ovin " + version + " is installed",
                        paragraph("It runs when Ovin is started again.", textFont, textWidth), resources),
                 row({{FlexibleSpace{}},
                      button("Later", later, KeyEquivalent::escape),
                      button("Restart Ovin", restart, KeyEquivalent::returnKey, true)})});
}

View reminder(const std::string& version, const Resources& resources) {
    Stack line;
    line.orientation = Stack::Orientation::horizontal;
    line.alignment = Stack::Alignment::center;
    line.spacing = gap;
    line.insets = {12, 14, 12, 14};
    line.views = {{ImageView{resources.applicationIcon(), {iconSide / 2, iconSide / 2}, 0, {}}},
                  {Label{{{"Ovin " + version + " is available", titleFont, Color{SystemColor::label}}}, {}}},
                  button("Later", later),
                  button("Show…", show)};
    return {std::move(line)};
}

}  // namespace ovin::UpdatePages
