#include "platform/linux/windows/LedgeWindow.h"

#include <algorithm>

#include "platform/linux/views/MenuBackgroundWidget.h"
#include "platform/linux/windows/WindowManager.h"

namespace ovin {

LedgeWindow::LedgeWindow()
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                           Qt::X11BypassWindowManagerHint | Qt::ToolTip) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    // Otherwise only active windows have any, and this one never is.
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_TranslucentBackground, WindowManager::composesWindows());
    setWindowTitle("Ovin");
    setAccessibleName("Ovin");
    layout_.setContentsMargins(0, 0, 0, 0);
    // Otherwise the least size of what is shown holds the window open for what comes next, which may be smaller.
    layout_.setSizeConstraint(QLayout::SetNoConstraint);
}

bool LedgeWindow::isUpToDate() const {
    return testAttribute(Qt::WA_TranslucentBackground) == WindowManager::composesWindows();
}

void LedgeWindow::present(QWidget* content, const QRect& frame) {
    dropContent();
    content_ = content;
    layout_.addWidget(content);
    setGeometry(frame);
    // A window that is shown already leaves both to the event loop, and would be painted empty now.
    content->show();
    layout_.activate();
    show();
    raise();
    paintNow();
}

void LedgeWindow::dismiss() {
    hide();
    dropContent();
}

void LedgeWindow::dropContent() {
    if (content_ == nullptr) return;
    // It would be painted until it is deleted.
    content_->hide();
    content_->deleteLater();
    layout_.removeWidget(content_);
    content_ = nullptr;
}

/// Paints without waiting for the X server to ask for it, which it does only once the program listens again. It shows this
/// window as soon as it is told to, since that is no window manager's business, and takes what is drawn after that.
void LedgeWindow::paintNow() {
    setAttribute(Qt::WA_Mapped);
    repaint();
}

void LedgeWindow::resizeEvent(QResizeEvent*) {
    const auto* background = dynamic_cast<const MenuBackgroundWidget*>(content_);
    if (background == nullptr) return clearMask();
    const double radius = std::min(background->cornerRadius(), height() / 2.0);
    const bool isSmooth = testAttribute(Qt::WA_TranslucentBackground);
    setMask(roundedRegion(rect(), radius, isSmooth ? Coverage::touch : Coverage::middle));
}

}  // namespace ovin
