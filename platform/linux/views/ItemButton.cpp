#include "platform/linux/views/ItemButton.h"

#include <QPainter>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "platform/icu/IcuText.h"
#include "platform/linux/drawing/IconLoader.h"
#include "platform/linux/drawing/LedgeIcon.h"
#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/QtFonts.h"
#include "platform/linux/drawing/ShownText.h"

namespace ovin {
namespace {

/// The padding on either side of a title, and the gap between an image and a title.
constexpr int titlePadding = 6;
constexpr int imageGap = 4;
/// As many as the ledge shows of an application that has no icon.
constexpr std::size_t initialsShown = 2;
constexpr Font initialsFont{13, Font::Weight::regular};
/// Most icons come before this, and initials in their place would only flicker.
constexpr std::chrono::milliseconds hesitation{150};
constexpr double highlightRadius = 5;
constexpr double hoverOpacity = 0.1;
constexpr double pressOpacity = 0.2;

AttributedText shown(AttributedText title) {
    for (TextRun& run : title) run.text = shownText(QString::fromStdString(run.text)).toStdString();
    return title;
}

}  // namespace

ItemButton::ItemButton(const Button& button)
    : PressButton(button.tag), title_(shown(button.title)), imagePosition_(button.imagePosition) {
    if (imagePosition_ != Button::ImagePosition::only) titleSize_ = title().size();
    setText(plainText(title_));
    setShortcut({});
    if (button.image) {
        image_ = button.image->image;
        if (const auto* loader = IconLoader::shared()) connect(loader, &IconLoader::loaded, this, &ItemButton::showLoaded);
        if (const auto* either = dynamic_cast<const ItemOrApplicationIcon*>(&image_->content())) {
            itemIcon_ = either->item;
            itemIcon_->addViewer(
                this, [this] { QMetaObject::invokeMethod(this, qOverload<>(&QWidget::update), Qt::QueuedConnection); });
        }
        setIconSize(QSizeF(button.image->size.width, button.image->size.height).toSize());
    }
    setPlainToolTip(*this, button.toolTip);
    setAccessibleName(shownText(QString::fromStdString(button.toolTip)));
    setFocusPolicy(Qt::TabFocus);
    if (button.height) setFixedHeight(qRound(*button.height));
    setFixedWidth(button.width ? qRound(*button.width) : contentWidth());
}

ItemButton::~ItemButton() {
    if (itemIcon_) itemIcon_->removeViewer(this);
}

TextLines ItemButton::title() const { return {title_, palette()}; }

QSize ItemButton::sizeHint() const {
    const QSize content(contentWidth(), std::max(titleSize_.height(), iconSize().height()));
    return content.expandedTo(minimumSize()).boundedTo(maximumSize());
}

int ItemButton::contentWidth() const {
    const bool showsImage = imagePosition_ != Button::ImagePosition::none;
    const bool showsTitle = imagePosition_ != Button::ImagePosition::only;
    const int image = showsImage ? iconSize().width() : 0;
    return image + titleSize_.width() + (showsImage && showsTitle ? imageGap : 0) + 2 * titlePadding;
}

void ItemButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || underMouse() || hasFocus()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(faded(palette().color(QPalette::WindowText), isDown() ? pressOpacity : hoverOpacity));
        painter.drawRoundedRect(rect(), highlightRadius, highlightRadius);
    }

    const bool showsImage = imagePosition_ != Button::ImagePosition::none;
    QRect rest = rect();
    if (showsImage) {
        const bool isAlone = imagePosition_ == Button::ImagePosition::only;
        QRect place(
            QPoint(isAlone ? (width() - iconSize().width()) / 2 : titlePadding, (height() - iconSize().height()) / 2),
            iconSize());
        drawImage(painter, place);
        rest.setLeft(place.right() + 1 + imageGap);
        rest.setRight(rest.right() - titlePadding);
    }
    if (imagePosition_ == Button::ImagePosition::only) return;
    const TextLines lines = title();
    const QSize spare = rest.size() - lines.size();
    lines.draw(painter, rest.topLeft() + QPoint(showsImage ? 0 : spare.width() / 2, spare.height() / 2));
}

void ItemButton::drawImage(QPainter& painter, const QRect& place) {
    const int side = static_cast<int>(std::ceil(std::min(place.width(), place.height()) * devicePixelRatioF()));
    const bool isFirst = side != pictureSide_;
    if (image_ && (isFirst || (itemIcon_ && itemIcon_->get() != pictured_))) {
        pictureSide_ = side;
        takeIcon(true);
        // Initials stay while one icon follows another and none comes.
        if (isFirst) asked_.start();
        if (isFirst && picture_.isNull()) QTimer::singleShot(hesitation, this, qOverload<>(&QWidget::update));
    }
    if (picture_.isNull()) {
        if (!asked_.hasExpired(hesitation.count())) return;
        const QString initials = QString::fromStdString(IcuText().prefix(accessibleName().toStdString(), initialsShown));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.setFont(qtFont(initialsFont));
        painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, initials);
        return;
    }
    // A small picture is shown in its own size.
    const QSizeF size = QSizeF(picture_.size()).scaled(QSizeF(picture_.size()).boundedTo(place.size()), Qt::KeepAspectRatio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRectF(QRectF(place).center() - QPointF(size.width(), size.height()) / 2, size), picture_,
                       QRectF(picture_.rect()));
}

void ItemButton::takeIcon(bool readsAgain) {
    if (itemIcon_) pictured_ = itemIcon_->get();
    // Until another icon has come, the last one stays.
    auto picture = ledgeIcon(*image_, pictureSide_, palette().color(QPalette::WindowText), readsAgain);
    if (picture) picture_ = QPixmap::fromImage(*std::move(picture));
}

void ItemButton::showLoaded() {
    if (!isVisible() || pictureSide_ == 0) return;
    takeIcon(false);
    update();
}

/// When it is shown again, the pointer may be elsewhere, and files of icons may have changed.
void ItemButton::hideEvent(QHideEvent*) {
    setDown(false);
    setAttribute(Qt::WA_UnderMouse, false);
    if (!pictured_ || !pictured_->isOfPixelsAlone()) pictureSide_ = 0;
}

void ItemButton::changeEvent(QEvent* event) {
    PressButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) pictureSide_ = 0;
}

}  // namespace ovin
