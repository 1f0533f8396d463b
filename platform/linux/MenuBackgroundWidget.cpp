#include "platform/linux/MenuBackgroundWidget.h"

#include <QBoxLayout>
#include <QPainter>

#include "platform/linux/QtColors.h"
#include "platform/linux/QtViews.h"

namespace ovin {

MenuBackgroundWidget::MenuBackgroundWidget(QWidget* content, double cornerRadius)
    : content_(content), cornerRadius_(cornerRadius) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
}

decltype(View::content) MenuBackgroundWidget::content() const {
    return MenuBackground{cornerRadius_, std::make_shared<const View>(readBack(*content_))};
}

void MenuBackgroundWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette().color(QPalette::Window));
    painter.setPen(QPen(qtColor({SystemColor::quaternaryLabel}, palette()), 1));
    const QRectF edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(edge, cornerRadius_ - 0.5, cornerRadius_ - 0.5);
}

}  // namespace ovin
