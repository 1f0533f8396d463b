#include "platform/linux/QtLedgePanel.h"

#include <QBoxLayout>
#include <QPainterPath>
#include <QRegion>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/MenuBackgroundWidget.h"
#include "platform/linux/QtViews.h"
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

/// Its corners are smooth where windows are composed. Elsewhere that would take a picture of what lies below, and Ovin takes
/// no pictures of the screen.
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

    /// Paints without waiting for the X server to ask for it, which it does only once the program listens again. It shows
    /// this window as soon as it is told to, since that is no window manager's business, and takes what is drawn after that.
    void paintNow() {
        setAttribute(Qt::WA_Mapped);
        repaint();
    }

protected:
    void resizeEvent(QResizeEvent*) override {
        const auto* background = dynamic_cast<const MenuBackgroundWidget*>(content_);
        if (background == nullptr) return clearMask();
        const double radius = std::min(background->cornerRadius(), height() / 2.0);
        setMask(testAttribute(Qt::WA_TranslucentBackground) ? touchedBy(rect(), radius) : coveredBy(rect(), radius));
    }

private:
    QHBoxLayout layout_{this};
    QWidget* content_ = nullptr;
};

QtLedgePanel::QtLedgePanel(std::function<void(int tag)> clicked, std::shared_ptr<MeasuredView> measured)
    : clicked_(std::make_shared<const std::function<void(int tag)>>(std::move(clicked))),
      measured_(std::move(measured)),
      window_(new Window) {}

QtLedgePanel::~QtLedgePanel() {
    window_->hide();
    window_->deleteLater();
}

void QtLedgePanel::show(const View& content, const Rect& frame) {
    // The handler outlives the call, whatever it destroys.
    const auto deliver = [weak = std::weak_ptr(clicked_)](int tag) {
        if (const auto clicked = weak.lock()) (*clicked)(tag);
    };
    window_->setContent(makeWidget(content, deliver, [&](const View& view) { return measured_->take(view, deliver); }));
    window_->setGeometry(QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect());
    window_->show();
    window_->raise();
    window_->paintNow();
}

}  // namespace ovin
