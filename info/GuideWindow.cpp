#include "info/GuideWindow.h"

#include <algorithm>
#include <utility>

#include "info/GuidePage.h"

namespace ovin {
namespace {

constexpr double highestScroll = 620;
/// The height of header, buttons and insets, and of the space to keep free around the window.
constexpr double aroundScroll = 190;
constexpr double aroundWindow = 80;
constexpr double scrollWithoutScreen = 530;

}  // namespace

void GuideWindow::show(bool isOrganizing, std::function<void()> onOrganize) {
    if (window_) window_->close();

    View page = guidePage(platform_.resources);
    const double height = scrollHeight(platform_.windows.fittingSize(page).height);
    window_ = platform_.windows.makeInformationWindow(
        "How Ovin Works", guideContent(platform_.resources, std::move(page), height, isOrganizing),
        [this, onOrganize = std::move(onOrganize)](int tag) { clicked(tag, onOrganize); });
    platform_.application.activate();
    window_->show();
    if (platform_.process.environment("OVIN_TEST_GUIDE") == "end") window_->scrollToEnd();
}

double GuideWindow::scrollHeight(double pageHeight) const {
    const auto screen = platform_.screens.main();
    const double available = screen ? screen->visibleFrame.size.height - aroundScroll - aroundWindow : scrollWithoutScreen;
    return std::min({available, pageHeight, highestScroll});
}

void GuideWindow::clicked(int tag, const std::function<void()>& onOrganize) {
    window_->close();
    if (tag == static_cast<int>(GuideButton::organize)) onOrganize();
}

}  // namespace ovin
