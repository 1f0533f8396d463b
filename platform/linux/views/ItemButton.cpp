#include "platform/linux/views/ItemButton.h"

#include <QPainter>
#include <algorithm>

#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/views/PressButton.h"

namespace ovin {
namespace {

/// Around a title, on either side, and between an image and a title.
constexpr int titlePadding = 6;
constexpr int imageGap = 4;
constexpr TextLines::Defaults defaults{{13, Font::Weight::regular}, {SystemColor::label}};
constexpr double highlightRadius = 5;
constexpr double hoverOpacity = 0.1;
constexpr double pressOpacity = 0.2;

}  // namespace

ItemButton::ItemButton(const Button& button) : described_(button) {
    setText(plainText(button.title));
    setShortcut({});
    if (button.image) {
        setIcon(qtIcon(button.image->image));
        setIconSize(QSizeF(button.image->size.width, button.image->size.height).toSize());
    }
    setPlainToolTip(*this, button.toolTip);
    setAccessibleName(QString::fromStdString(button.toolTip));
    setFocusPolicy(Qt::TabFocus);
    if (button.height) setFixedHeight(qRound(*button.height));
    setFixedWidth(button.width ? qRound(*button.width) : contentWidth());
}

decltype(View::content) ItemButton::content() const {
    Button button = described_;
    button.title = shownText(described_.title, text());
    if (button.image) {
        const Size& asked = described_.image->size;
        button.image->size = {readBackLength(asked.width, iconSize().width()),
                              readBackLength(asked.height, iconSize().height())};
    }
    button.toolTip = accessibleName().toStdString();
    if (button.width) button.width = readBackLength(*described_.width, width());
    if (button.height) button.height = readBackLength(*described_.height, height());
    return button;
}

TextLines ItemButton::title() const { return {shownText(described_.title, text()), defaults, palette()}; }

/// Layouts ask for sizes again and again, and laying out a text costs more than all the rest of a button.
QSize ItemButton::titleSize() const {
    if (!measuredTitle_ || measuredTitle_->text != text()) measuredTitle_ = MeasuredTitle{text(), title().size()};
    return measuredTitle_->size;
}

QSize ItemButton::sizeHint() const {
    if (described_.height) return {contentWidth(), qRound(*described_.height)};
    return {contentWidth(), std::max(titleSize().height(), iconSize().height())};
}

int ItemButton::contentWidth() const {
    const bool showsImage = described_.imagePosition != Button::ImagePosition::none;
    const bool showsTitle = described_.imagePosition != Button::ImagePosition::only;
    const int image = showsImage ? iconSize().width() : 0;
    const int text = showsTitle ? titleSize().width() : 0;
    return image + text + (showsImage && showsTitle ? imageGap : 0) + 2 * titlePadding;
}

void ItemButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || underMouse() || hasFocus()) {
        QColor highlight = palette().color(QPalette::WindowText);
        highlight.setAlphaF(static_cast<float>(isDown() ? pressOpacity : hoverOpacity));
        painter.setPen(Qt::NoPen);
        painter.setBrush(highlight);
        painter.drawRoundedRect(rect(), highlightRadius, highlightRadius);
    }

    const bool showsImage = described_.imagePosition != Button::ImagePosition::none;
    QRect rest = rect();
    if (showsImage) {
        const bool isAlone = described_.imagePosition == Button::ImagePosition::only;
        QRect place(
            QPoint(isAlone ? (width() - iconSize().width()) / 2 : titlePadding, (height() - iconSize().height()) / 2),
            iconSize());
        icon().paint(&painter, place);
        rest.setLeft(place.right() + 1 + imageGap);
        rest.setRight(rest.right() - titlePadding);
    }
    if (described_.imagePosition == Button::ImagePosition::only) return;
    const TextLines lines = title();
    const QSize spare = rest.size() - lines.size();
    lines.draw(painter, rest.topLeft() + QPoint(showsImage ? 0 : spare.width() / 2, spare.height() / 2));
}

void ItemButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void ItemButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

}  // namespace ovin
