#include "platform/linux/windows/QtWindows.h"

#include <utility>

#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/StackLayout.h"
#include "platform/linux/windows/QtFloatingPanel.h"
#include "platform/linux/windows/QtInformationWindow.h"

namespace ovin {

Size QtWindows::fittingSize(const View& view) const {
    if (LaidOutView laidOut{view}; reserve_->measured != laidOut) {
        const std::unique_ptr<QWidget> widget(makeWidget(view, {}));
        const QSize size = view.isHidden ? QSize(0, 0) : naturalSize(*widget);
        reserve_->size = {static_cast<double>(size.width()), static_cast<double>(size.height())};
        reserve_->measured = std::move(laidOut);
    }
    return reserve_->size;
}

std::unique_ptr<LedgePanel> QtWindows::makeLedgePanel() { return std::make_unique<QtLedgePanel>(reserve_); }

std::unique_ptr<InformationWindow> QtWindows::makeInformationWindow(const std::string& title, const View& content,
                                                                    std::function<void(int tag)> clicked) {
    return std::make_unique<QtInformationWindow>(title, content, std::move(clicked));
}

std::unique_ptr<FloatingPanel> QtWindows::makeFloatingPanel(const std::string& title, std::function<void(int tag)> clicked,
                                                            std::function<void()> closed) {
    return std::make_unique<QtFloatingPanel>(title, std::move(clicked), std::move(closed));
}

}  // namespace ovin
