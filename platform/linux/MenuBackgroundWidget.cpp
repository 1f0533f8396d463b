#include "platform/linux/MenuBackgroundWidget.h"

#include <QBoxLayout>
#include <QPainter>
#include <QtMath>

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

/// The toolkit shares out the lines of a large shape among threads and waits for them, which takes longer than drawing, and
/// far longer while a discovery keeps the processors busy. So only the corners are drawn as shapes.
void MenuBackgroundWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor fill = palette().color(QPalette::Window);
    const QColor line = qtColor({SystemColor::quaternaryLabel}, palette());
    const QRegion corners = this->corners();
    const QRegion edge = QRegion(rect()) - rect().adjusted(1, 1, -1, -1);
    for (const QRect& straight : QRegion(rect()) - corners) painter.fillRect(straight, fill);
    for (const QRect& straight : edge - corners) painter.fillRect(straight, line);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(QPen(line, 1));
    for (const QRect& corner : corners) {
        painter.setClipRect(corner);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius_ - 0.5, cornerRadius_ - 0.5);
    }
}

QRegion MenuBackgroundWidget::corners() const {
    const QSize size = QSize(qCeil(cornerRadius_), qCeil(cornerRadius_)).boundedTo(QWidget::size());
    const QPoint farthest(width() - size.width(), height() - size.height());
    QRegion corners;
    for (const int x : {0, farthest.x()}) {
        for (const int y : {0, farthest.y()}) corners += QRect(QPoint(x, y), size);
    }
    return corners;
}

}  // namespace ovin
