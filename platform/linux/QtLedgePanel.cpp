#include "platform/linux/QtLedgePanel.h"

#include <QBoxLayout>
#include <QPainterPath>
#include <QRegion>
#include <utility>

#include "platform/linux/MenuBackgroundWidget.h"
#include "platform/linux/QtViews.h"

namespace ovin {

class QtLedgePanel::Window final : public QWidget {
public:
    Window()
        : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                               Qt::X11BypassWindowManagerHint | Qt::ToolTip) {
        setAttribute(Qt::WA_ShowWithoutActivating);
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
    /// Rounded corners also where nothing composes windows.
    void resizeEvent(QResizeEvent*) override {
        const auto* background = dynamic_cast<const MenuBackgroundWidget*>(content_);
        if (background == nullptr) return clearMask();
        QPainterPath path;
        path.addRoundedRect(rect(), background->cornerRadius(), background->cornerRadius());
        setMask(QRegion(path.toFillPolygon().toPolygon()));
    }

private:
    QHBoxLayout layout_{this};
    QWidget* content_ = nullptr;
};

QtLedgePanel::QtLedgePanel(std::function<void(int tag)> clicked) : clicked_(std::move(clicked)), window_(new Window) {}

QtLedgePanel::~QtLedgePanel() {
    window_->hide();
    window_->deleteLater();
}

void QtLedgePanel::show(const View& content, const Rect& frame) {
    window_->setContent(makeWidget(content, clicked_));
    window_->setGeometry(QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect());
    window_->show();
    window_->raise();
    window_->paintNow();
}

}  // namespace ovin
