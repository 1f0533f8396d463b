#include "platform/linux/views/UprightScroller.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QScrollBar>
#include <optional>

#include "platform/linux/views/StackLayout.h"

namespace ovin {
namespace {

constexpr int scrollerWidth = 12;
constexpr int pointsPerLine = 24;
constexpr int handleOpacity = 90;

std::optional<QAbstractSlider::SliderAction> actionFor(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Up:
            return QAbstractSlider::SliderSingleStepSub;
        case Qt::Key_Down:
            return QAbstractSlider::SliderSingleStepAdd;
        case Qt::Key_PageUp:
            return QAbstractSlider::SliderPageStepSub;
        case Qt::Key_PageDown:
            return QAbstractSlider::SliderPageStepAdd;
        case Qt::Key_Space:
            return event.modifiers().testFlag(Qt::ShiftModifier) ? QAbstractSlider::SliderPageStepSub
                                                                 : QAbstractSlider::SliderPageStepAdd;
        case Qt::Key_Home:
            return QAbstractSlider::SliderToMinimum;
        case Qt::Key_End:
            return QAbstractSlider::SliderToMaximum;
        default:
            return std::nullopt;
    }
}

}  // namespace

UprightScroller::UprightScroller(QWidget* content, Size size) : scroller_(new QScrollBar(Qt::Vertical, this)) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    // The page is as wide as the scroller, and as high as it needs to be.
    setWidgetResizable(true);
    const bool isHidden = isHiddenOnPurpose(*content);
    setWidget(content);  // which shows it
    content->setHidden(isHidden);
    content->setAutoFillBackground(false);
    connectScroller();
    setFixedSize(QSizeF(size.width, size.height).toSize());
    // The toolkit's default policy would let it grow.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

/// The area's own bar would take room from the page, so this one lies over the page and follows that bar.
void UprightScroller::connectScroller() {
    styleScroller();
    scroller_->setFocusPolicy(Qt::NoFocus);
    scroller_->hide();
    setFocusPolicy(Qt::NoFocus);
    QScrollBar* const own = verticalScrollBar();
    own->setSingleStep(pointsPerLine);
    connect(own, &QScrollBar::rangeChanged, scroller_, [this, own](int lowest, int highest) {
        scroller_->setRange(lowest, highest);
        scroller_->setPageStep(own->pageStep());
        scroller_->setVisible(highest > lowest);
        setFocusPolicy(highest > lowest ? Qt::StrongFocus : Qt::NoFocus);
    });
    connect(own, &QScrollBar::valueChanged, scroller_, &QScrollBar::setValue);
    connect(scroller_, &QScrollBar::valueChanged, own, &QScrollBar::setValue);
}

void UprightScroller::styleScroller() {
    const QColor text = palette().color(QPalette::WindowText);
    scroller_->setStyleSheet(QString("QScrollBar { background: transparent; width: 12px; margin: 0; }"
                                     "QScrollBar::handle { background: rgba(%1, %2, %3, %4); border-radius: 3px;"
                                     "  min-height: 32px; margin: 3px; }"
                                     "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
                                     "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }")
                                 .arg(text.red())
                                 .arg(text.green())
                                 .arg(text.blue())
                                 .arg(handleOpacity));
}

void UprightScroller::scrollToEnd() {
    // A page that has not been shown has not been laid out either, so its length is not known.
    endsWhenShown_ = !isVisible();
    if (endsWhenShown_) return;
    if (widget()->layout() != nullptr) widget()->layout()->activate();
    QCoreApplication::sendPostedEvents(this, QEvent::LayoutRequest);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void UprightScroller::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    if (endsWhenShown_) scrollToEnd();
}

bool UprightScroller::scrollBy(const QKeyEvent& key) {
    const auto action = actionFor(key);
    if (!action || verticalScrollBar()->maximum() == 0) return false;
    verticalScrollBar()->triggerAction(*action);
    return true;
}

void UprightScroller::keyPressEvent(QKeyEvent* event) { event->setAccepted(scrollBy(*event)); }

void UprightScroller::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    scroller_->setGeometry(width() - scrollerWidth, 0, scrollerWidth, height());
    scroller_->raise();
}

void UprightScroller::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) styleScroller();
}

}  // namespace ovin
