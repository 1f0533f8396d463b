#include "platform/linux/ItemButton.h"

#include <QPainter>
#include <algorithm>

#include "platform/linux/QtFonts.h"
#include "platform/linux/QtIcons.h"

namespace ovin {
namespace {

/// Around a title, on either side, and between an image and a title.
constexpr int titlePadding = 6;
constexpr int imageGap = 4;
constexpr double highlightRadius = 5;
constexpr double hoverOpacity = 0.1;
constexpr double pressOpacity = 0.2;

}  // namespace

ItemButton::ItemButton(const Button& button)
    : imagePosition_(button.imagePosition),
      hasWidth_(button.width.has_value()),
      hasHeight_(button.height.has_value()),
      tag_(button.tag) {
    if (!button.title.empty()) {
        setText(QString::fromStdString(button.title.front().text));
        font_ = button.title.front().font;
        if (font_) setFont(qtFont(*font_));
    }
    if (button.image) {
        image_ = button.image->image;
        setIcon(qtIcon(button.image->image));
        setIconSize(QSizeF(button.image->size.width, button.image->size.height).toSize());
    }
    const QString toolTip = QString::fromStdString(button.toolTip);
    // As plain text, whatever it holds: an application's name is not mark-up.
    setToolTip(toolTip.isEmpty() ? QString() : "<span>" + toolTip.toHtmlEscaped() + "</span>");
    setAccessibleName(toolTip);
    setFocusPolicy(Qt::TabFocus);
    if (hasHeight_) setFixedHeight(qRound(*button.height));
    setFixedWidth(hasWidth_ ? qRound(*button.width) : contentWidth());
}

Button ItemButton::description() const {
    Button button;
    if (!text().isNull()) button.title = {{text().toStdString(), font_, {}}};
    if (image_)
        button.image =
            SizedImage{*image_, {static_cast<double>(iconSize().width()), static_cast<double>(iconSize().height())}};
    button.imagePosition = imagePosition_;
    button.toolTip = accessibleName().toStdString();
    if (hasWidth_) button.width = width();
    if (hasHeight_) button.height = height();
    button.tag = tag_;
    return button;
}

QSize ItemButton::sizeHint() const { return {contentWidth(), std::max(fontMetrics().height(), iconSize().height())}; }

int ItemButton::contentWidth() const {
    const bool showsImage = imagePosition_ != Button::ImagePosition::none;
    const bool showsTitle = imagePosition_ != Button::ImagePosition::only;
    const int image = showsImage ? iconSize().width() : 0;
    const int title = showsTitle ? fontMetrics().horizontalAdvance(text()) : 0;
    return image + title + (showsImage && showsTitle ? imageGap : 0) + 2 * titlePadding;
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

    const bool showsImage = imagePosition_ != Button::ImagePosition::none;
    QRect rest = rect();
    if (showsImage) {
        const bool isAlone = imagePosition_ == Button::ImagePosition::only;
        QRect place(
            QPoint(isAlone ? (width() - iconSize().width()) / 2 : titlePadding, (height() - iconSize().height()) / 2),
            iconSize());
        icon().paint(&painter, place);
        rest.setLeft(place.right() + 1 + imageGap);
        rest.setRight(rest.right() - titlePadding);
    }
    if (imagePosition_ == Button::ImagePosition::only) return;
    painter.setPen(palette().color(QPalette::WindowText));
    const Qt::Alignment alignment = showsImage ? Qt::AlignVCenter | Qt::AlignLeft : Qt::AlignCenter;
    painter.drawText(rest, static_cast<int>(alignment.toInt()), text());
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
