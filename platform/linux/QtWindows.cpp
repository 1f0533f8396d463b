#include "platform/linux/QtWindows.h"

#include <utility>

#include "platform/linux/QtLedgePanel.h"
#include "platform/linux/QtViews.h"

namespace ovin {

Size QtWindows::fittingSize(const View& view) const {
    const std::unique_ptr<QWidget> widget(makeWidget(view, {}));
    if (view.isHidden) return {};
    const QSize size = widget->sizeHint();
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

std::unique_ptr<LedgePanel> QtWindows::makeLedgePanel(std::function<void(int tag)> clicked) {
    return std::make_unique<QtLedgePanel>(std::move(clicked));
}

// Not there yet.
std::unique_ptr<InformationWindow> QtWindows::makeInformationWindow(const std::string&, const View&, Size,
                                                                    std::function<void(int tag)>) {
    return nullptr;
}

std::unique_ptr<FloatingPanel> QtWindows::makeFloatingPanel(const std::string&, std::function<void(int tag)>,
                                                            std::function<void()>) {
    return nullptr;
}

}  // namespace ovin
