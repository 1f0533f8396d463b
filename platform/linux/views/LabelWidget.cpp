#include "platform/linux/views/LabelWidget.h"

namespace ovin {
namespace {

constexpr TextLines::Defaults defaults{{13, Font::Weight::regular}, {SystemColor::label}};

}  // namespace

LabelWidget::LabelWidget(const Label& label) : described_(label) {
    setTextFormat(Qt::PlainText);
    setText(plainText(label.text));
    if (!label.wrapWidth) return;
    setWordWrap(true);
    setFixedWidth(qRound(*label.wrapWidth));
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

decltype(View::content) LabelWidget::content() const {
    return Label{shownText(described_.text, text()), shownWrapWidth(), described_.lineSpacing};
}

std::optional<double> LabelWidget::shownWrapWidth() const {
    if (!wordWrap()) return std::nullopt;
    return described_.wrapWidth ? readBackLength(*described_.wrapWidth, width()) : width();
}

TextLines LabelWidget::lines(std::optional<double> wrapWidth) const {
    return {shownText(described_.text, text()), defaults, palette(), wrapWidth, described_.lineSpacing};
}

QSize LabelWidget::sizeHint() const {
    const auto wrapWidth = shownWrapWidth();
    const QSize size = lines(wrapWidth).size();
    return wrapWidth ? QSize(qRound(*wrapWidth), size.height()) : size;
}

int LabelWidget::heightForWidth(int width) const { return wordWrap() ? lines(width).size().height() : -1; }

void LabelWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    lines(shownWrapWidth()).draw(painter, {0, 0});
}

}  // namespace ovin
