#include "platform/linux/QtWindows.h"

#include <utility>

#include "platform/linux/QtLedgePanel.h"
#include "platform/linux/QtViews.h"

namespace ovin {

Size QtWindows::fittingSize(const View& view) const {
    const std::unique_ptr<QWidget> widget(makeWidget(view, {}));
    const QSize size = widget->sizeHint();
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

std::unique_ptr<LedgePanel> QtWindows::makeLedgePanel(std::function<void(int tag)> clicked) {
    return std::make_unique<QtLedgePanel>(std::move(clicked));
}

}  // namespace ovin
