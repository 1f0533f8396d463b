#include "platform/linux/windows/QtWindows.h"

#include <utility>

#include "platform/linux/windows/QtFloatingPanel.h"
#include "platform/linux/windows/QtInformationWindow.h"

namespace ovin {

Size QtWindows::fittingSize(const View& view) const {
    const QSize size = reserve_->measured.fit(view);
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
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
