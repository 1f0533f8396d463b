#include "platform/linux/QtFloatingPanel.h"

#include <utility>

#include "platform/linux/WindowManager.h"

namespace ovin {

QtFloatingPanel::QtFloatingPanel(const std::string& title, std::function<void(int tag)> clicked,
                                 std::function<void()> closed)
    : window_(new ViewWindow(
          QString::fromStdString(title),
          Qt::Tool | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint,
          {std::move(clicked), std::move(closed)})) {
    window_->setAttribute(Qt::WA_ShowWithoutActivating);
}

QtFloatingPanel::~QtFloatingPanel() { window_->dismiss(); }

void QtFloatingPanel::show(const View& content, Size size, const std::optional<Point>& origin) {
    window_->setView(content, size);
    if (origin) window_->move(qRound(origin->x), qRound(origin->y));
    // A window manager that put it away has taken this from it.
    if (!window_->isVisible()) WindowManager::putOnAllDesktops(*window_);
    window_->show();
    window_->raise();
}

void QtFloatingPanel::replace(const View& content, Size size) { window_->setView(content, size); }

}  // namespace ovin
