#include "platform/linux/views/LabelWidget.h"

namespace ovin {

LabelWidget::LabelWidget(const Label& label) : label_(label) {
    setTextFormat(Qt::PlainText);
    setText(plainText(label.text));
    if (!label.wrapWidth) return;
    setWordWrap(true);
    setFixedWidth(qRound(*label.wrapWidth));
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TextLines LabelWidget::lines(std::optional<double> wrapWidth) const {
    return {label_.text, palette(), wrapWidth, label_.lineSpacing};
}

QSize LabelWidget::sizeHint() const {
    const QSize size = lines(label_.wrapWidth).size();
    return label_.wrapWidth ? QSize(qRound(*label_.wrapWidth), size.height()) : size;
}

int LabelWidget::heightForWidth(int width) const { return label_.wrapWidth ? lines(width).size().height() : -1; }

void LabelWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    lines(label_.wrapWidth).draw(painter, {0, 0});
}

}  // namespace ovin
