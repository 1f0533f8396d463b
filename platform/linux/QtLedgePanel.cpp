#include "platform/linux/QtLedgePanel.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/MenuBackgroundWidget.h"
#include "platform/linux/QtViews.h"
#include "platform/linux/WindowManager.h"

namespace ovin {

namespace {

/// Of what the ledge lies on: more than any ledge is high.
constexpr int backdropHeight = 96;

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

}  // namespace

/// Its corners are round and smooth also where nothing composes windows: the few pixels that they cover only in part show
/// what was there before the window.
class QtLedgePanel::Window final : public QWidget {
public:
    Window()
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

    void setContent(QWidget* content) {
        if (content_ != nullptr) content_->deleteLater();
        if (content_ != nullptr) layout_.removeWidget(content_);
        content_ = content;
        layout_.addWidget(content);
    }

    /// As long as the window is open, what lies below it cannot be seen any more; so the whole row is taken beforehand,
    /// wherever the window goes in it.
    void placeAt(const QRect& frame) {
        if (!isVisible() && !testAttribute(Qt::WA_TranslucentBackground)) takeBackdrop(frame.topLeft());
        setGeometry(frame);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!backdrop_.isNull()) QPainter(this).drawPixmap(backdropOrigin_ - pos(), backdrop_);
    }

    void resizeEvent(QResizeEvent*) override {
        const auto* background = dynamic_cast<const MenuBackgroundWidget*>(content_);
        if (background == nullptr) return clearMask();
        setMask(touchedBy(rect(), std::min(background->cornerRadius(), height() / 2.0)));
    }

private:
    void takeBackdrop(QPoint corner) {
        QScreen* const screen = QGuiApplication::screenAt(corner);
        backdrop_ = {};
        if (screen == nullptr) return;
        const QRect all = screen->geometry();
        backdropOrigin_ = {all.left(), corner.y()};
        backdrop_ = screen->grabWindow(0, 0, corner.y() - all.top(), all.width(), backdropHeight);
    }

    QHBoxLayout layout_{this};
    QWidget* content_ = nullptr;
    QPixmap backdrop_;
    QPoint backdropOrigin_;
};

QtLedgePanel::QtLedgePanel(std::function<void(int tag)> clicked) : clicked_(std::move(clicked)), window_(new Window) {}

QtLedgePanel::~QtLedgePanel() {
    window_->hide();
    window_->deleteLater();
}

void QtLedgePanel::show(const View& content, const Rect& frame) {
    window_->setContent(makeWidget(content, clicked_));
    window_->placeAt(QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect());
    window_->show();
    window_->raise();
}

}  // namespace ovin
