#include "platform/linux/views/SidewaysScroller.h"

#include <QScrollBar>
#include <QWheelEvent>
#include <cstdlib>

#include "platform/linux/views/StackLayout.h"

namespace ovin {
namespace {

constexpr int scrollerHeight = 4;
/// How far a notch of a plain wheel scrolls: about two buttons.
constexpr double pointsPerNotch = 64;
constexpr double unitsPerNotch = 120;

const char* const scrollerStyle =
    "QScrollBar { background: transparent; height: 4px; margin: 0 10px; }"
    "QScrollBar::handle { background: palette(mid); border-radius: 2px; min-width: 24px; }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0; }";

}  // namespace

SidewaysScroller::SidewaysScroller(QWidget* content, Size size) : scroller_(new QScrollBar(Qt::Horizontal, this)) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    const bool isHidden = isHiddenOnPurpose(*content);
    setWidget(content);  // which shows it
    content->setHidden(isHidden);
    content->setAutoFillBackground(false);
    content->resize(naturalSize(*content).width(), qRound(size.height));

    // The area's own bar would take room from the row, so this one lies over the row and follows that bar.
    scroller_->setStyleSheet(scrollerStyle);
    QScrollBar* const own = horizontalScrollBar();
    connect(own, &QScrollBar::rangeChanged, scroller_, [this, own](int lowest, int highest) {
        scroller_->setRange(lowest, highest);
        scroller_->setPageStep(own->pageStep());
    });
    connect(own, &QScrollBar::valueChanged, scroller_, &QScrollBar::setValue);
    connect(scroller_, &QScrollBar::valueChanged, own, &QScrollBar::setValue);
    setFixedSize(QSizeF(size.width, size.height).toSize());
    // The toolkit's default policy would let it grow.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SidewaysScroller::wheelEvent(QWheelEvent* event) {
    const auto further = [](QPoint delta) { return std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y(); };
    const double distance = event->hasPixelDelta() ? further(event->pixelDelta())
                                                   : further(event->angleDelta()) / unitsPerNotch * pointsPerNotch;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - qRound(distance));
    event->accept();
}

void SidewaysScroller::hideEvent(QHideEvent*) { horizontalScrollBar()->setValue(0); }

void SidewaysScroller::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    scroller_->setGeometry(0, height() - scrollerHeight - 1, width(), scrollerHeight);
    scroller_->raise();
}

}  // namespace ovin
