#include "organize/ArrangeWindow.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace ovin {
namespace {

constexpr const char* windowTitle = "Organize your menu bar";
constexpr const char* collapsedKey = "OvinArrangeCardCollapsed";
/// A display may become wider than that, but then a card of its usual size would not fit on it.
constexpr double largestScale = 2.2;
constexpr double distanceFromTop = 60;

FloatingPanel::Placement placementOn(const std::optional<Screen>& screen, double scale) {
    if (!screen) return {};
    return [visible = screen->visibleFrame, scale](Size size) {
        return Point{visible.origin.x + (visible.size.width - size.width) / 2, visible.origin.y + distanceFromTop * scale};
    };
}

}  // namespace

ArrangeWindow::ArrangeWindow(const Platform& platform, std::function<void()> onDone)
    : platform_(platform), onDone_(std::move(onDone)) {}

ArrangeWindow::~ArrangeWindow() = default;

void ArrangeWindow::show(double scale, bool allItemsFit) {
    close();
    content_.scale = std::max(1.0, std::min(scale, largestScale));
    content_.isCardExpanded = !platform_.defaults.boolean(collapsedKey);
    content_.hasFitWarning = !allItemsFit;
    content_.collapsedPicture = platform_.resources.picture("explainer-collapsed");
    content_.expandedPicture = platform_.resources.picture("explainer-expanded");

    // The panel is part of this object, and silent once it is gone.
    panel_ = platform_.windows.makeFloatingPanel(
        windowTitle, [this](int tag) { clicked(tag); }, [this] { closedByUser(); });
    panel_->show(arrangeView(platform_.resources.words(), content_), placementOn(platform_.screens.main(), content_.scale));
}

void ArrangeWindow::addFitWarning() {
    if (!panel_ || content_.hasFitWarning) return;
    content_.hasFitWarning = true;
    describeAgain();
}

void ArrangeWindow::expandCard() {
    if (!panel_) return;
    content_.isCardExpanded = true;
    describeAgain();
}

void ArrangeWindow::close() { panel_.reset(); }

void ArrangeWindow::clicked(int tag) {
    switch (static_cast<ArrangeButton>(tag)) {
        case ArrangeButton::disclosure:
        case ArrangeButton::howDoesThisWork:
            return toggleCard();
        case ArrangeButton::done:
            return doneClicked();
    }
}

void ArrangeWindow::toggleCard() {
    if (!panel_) return;
    content_.isCardExpanded = !content_.isCardExpanded;
    // If the choice cannot be stored, only the choice is lost.
    (void)platform_.defaults.set(collapsedKey, !content_.isCardExpanded);
    describeAgain();
}

void ArrangeWindow::doneClicked() {
    // A copy, because the call may destroy this object, and with it the function.
    const auto onDone = onDone_;
    onDone();
}

void ArrangeWindow::closedByUser() {
    panel_.reset();
    doneClicked();
}

void ArrangeWindow::describeAgain() { panel_->replace(arrangeView(platform_.resources.words(), content_)); }

}  // namespace ovin
