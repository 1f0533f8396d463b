#include "platform/linux/LedgeWindow.h"

#include <QPainterPath>
#include <QRegion>
#include <algorithm>
#include <cmath>

#include "platform/linux/MenuBackgroundWidget.h"
#include "platform/linux/WindowManager.h"

namespace ovin {
namespace {

/// All pixels that a rectangle with round corners touches, also those of which it covers only a part.
QRegion touchedBy(const QRect& rect, double cornerRadius) {
    QRegion region = rect.adjusted(0, qCeil(cornerRadius), 0, -qCeil(cornerRadius));
    for (int row = 0; row < cornerRadius; ++row) {
        const double reach = std::max(0.0, cornerRadius - row - 1);
        const int inset = qFloor(cornerRadius - std::sqrt(cornerRadius * cornerRadius - reach * reach));
        const QRect line(rect.left() + inset, rect.top() + row, rect.width() - 2 * inset, 1);
        region += line;
        region += line.translated(0, rect.height() - 1 - 2 * row);
    }
    return region;
}

/// The pixels that are inside for the most part.
QRegion coveredBy(const QRect& rect, double cornerRadius) {
    QPainterPath path;
    path.addRoundedRect(rect, cornerRadius, cornerRadius);
    return QRegion(path.toFillPolygon().toPolygon());
}

}  // namespace

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
}

bool LedgeWindow::isUpToDate() const {
    return testAttribute(Qt::WA_TranslucentBackground) == WindowManager::composesWindows();
}

void LedgeWindow::present(QWidget* content, const QRect& frame) {
    dropContent();
    content_ = content;
    layout_.addWidget(content);
    setGeometry(frame);
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
}

/// Paints without waiting for the X server to ask for it, which it does only once the program listens again. It shows this
/// window as soon as it is told to, since that is no window manager's business, and takes what is drawn after that.
void LedgeWindow::paintNow() {
    setAttribute(Qt::WA_Mapped);
    repaint();
}

void LedgeWindow::resizeEvent(QResizeEvent*) {
    const auto* background = dynamic_cast<const MenuBackgroundWidget*>(content_.data());
    if (background == nullptr) return clearMask();
    const double radius = std::min(background->cornerRadius(), height() / 2.0);
    setMask(testAttribute(Qt::WA_TranslucentBackground) ? touchedBy(rect(), radius) : coveredBy(rect(), radius));
}

}  // namespace ovin
