#include "platform/linux/windows/QtInformationWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "platform/linux/windows/WindowManager.h"

namespace ovin {

QtInformationWindow::QtInformationWindow(const std::string& title, const View& content, std::function<void(int tag)> clicked)
    : window_(new ViewWindow(QString::fromStdString(title), Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint,
                             {std::move(clicked), {}})) {
    window_->setView(content);
}

QtInformationWindow::~QtInformationWindow() { window_->dismiss(); }

void QtInformationWindow::show() {
    if (!window_->isVisible()) place();
    if (window_->isMinimized()) window_->showNormal();
    WindowManager::bringToFront(*window_);
}

void QtInformationWindow::place() {
    if (const auto position = window_->lastPosition()) return window_->move(*position);
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    const QRect room = screen->availableGeometry();
    const QSize spare = (room.size() - window_->size()) / 2;
    window_->move(room.topLeft() + QPoint(std::max(0, spare.width()), std::max(0, spare.height())));
}

void QtInformationWindow::close() { window_->hide(); }

void QtInformationWindow::scrollToEnd() { window_->scrollToEnd(); }

}  // namespace ovin
