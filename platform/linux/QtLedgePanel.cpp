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

QtLedgePanel::QtLedgePanel(std::function<void(int tag)> clicked)
    : clicked_(std::make_shared<const std::function<void(int tag)>>(std::move(clicked))), window_(new Window) {}

QtLedgePanel::~QtLedgePanel() {
    window_->hide();
    window_->deleteLater();
}

void QtLedgePanel::show(const View& content, const Rect& frame) {
    // The handler outlives the call, whatever it destroys.
    window_->setContent(makeWidget(content, [weak = std::weak_ptr(clicked_)](int tag) {
        if (const auto clicked = weak.lock()) (*clicked)(tag);
    }));
    window_->setGeometry(QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect());
    window_->show();
    window_->raise();
}

}  // namespace ovin
