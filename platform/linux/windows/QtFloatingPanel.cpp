#include "platform/linux/windows/QtFloatingPanel.h"

#include <QWindow>
#include <utility>

#include "platform/linux/windows/WindowManager.h"

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

void QtFloatingPanel::show(const View& content, const Placement& placement) {
    window_->setView(content);
    hasOrigin_ = static_cast<bool>(placement);
    if (placement) {
        const Point origin = placement({static_cast<double>(window_->width()), static_cast<double>(window_->height())});
        window_->move(qRound(origin.x), qRound(origin.y));
    }
    // Asked for at each show, because a window manager forgets it when the window is hidden.
    WindowManager::showOnAllDesktops(*window_);
    window_->raise();
    if (hasOrigin_) window_->windowHandle()->setFramePosition(window_->pos());
}

void QtFloatingPanel::replace(const View& content) {
    const QPoint corner = window_->pos();
    window_->setView(content);
    QWindow* const native = window_->windowHandle();
    if (native == nullptr || (!hasOrigin_ && native->frameMargins().isNull())) return;
    // The toolkit sends a new size with the content's position, which it does not know before it knows the frame: without
    // this the content would stand where the frame should.
    native->setFramePosition(corner);
}

}  // namespace ovin
