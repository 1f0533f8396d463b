#include "desktop/BarWindow.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QLocale>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>

#include "desktop/DockProperties.h"
#include "desktop/ItemIcon.h"

namespace ovin {
namespace {

/// The room that is left for an application's menus, on a bar that is at least twice as wide.
constexpr int menusWidth = 520;

QString timeText() {
    const QLocale locale = QLocale::system();
    QString format = locale.timeFormat(QLocale::ShortFormat);
    format.remove(QLatin1String(":ss"));
    return locale.toString(QDateTime::currentDateTime(), QLatin1String("ddd d MMM  ") + format);
}

QPoint toServer(QPoint logical, const QScreen& screen) {
    const QPoint origin = screen.geometry().topLeft();
    return origin + (logical - origin) * screen.devicePixelRatio();
}

}  // namespace

BarWindow::BarWindow(StatusNotifierHost& host, ActiveApplication& application, MinuteClock& clock)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus), host_(host), application_(application) {
    setObjectName(QStringLiteral("MenuBar"));
    setWindowTitle(QStringLiteral("Menu bar"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_ShowWithoutActivating);
    connect(&host, &StatusNotifierHost::itemsChanged, this, &BarWindow::layOut);
    connect(&host, &StatusNotifierHost::itemRemoved, this, &BarWindow::forget);
    connect(&host, &StatusNotifierHost::menuReady, this, &BarWindow::showMenu);
    connect(&application, &ActiveApplication::nameChanged, this, qOverload<>(&QWidget::update));
    connect(&clock, &MinuteClock::minuteChanged, this, &BarWindow::tick);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &BarWindow::followScreen);
}

void BarWindow::open() {
    makeDock(winId());
    time_ = timeText();
    followScreen();
    show();
}

void BarWindow::followScreen() {
    disconnect(screenGeometry_);
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary) return;
    screenGeometry_ = connect(primary, &QScreen::geometryChanged, this, &BarWindow::place);
    place();
}

void BarWindow::place() {
    const QScreen& primary = *QGuiApplication::primaryScreen();
    const QRect frame(primary.geometry().topLeft(), QSize(primary.geometry().width(), BarPainter::barHeight));
    setFixedSize(frame.size());
    move(frame.topLeft());
    reserveTop(winId(), {frame.topLeft(), (QSizeF(frame.size()) * primary.devicePixelRatio()).toSize()});
    layOut();
}

void BarWindow::tick() {
    time_ = timeText();
    layOut();
    host_.retryItems();
}

BarContent BarWindow::content() {
    BarContent content;
    content.barWidth = width();
    content.clockWidth = BarPainter::clockWidth(time_);
    content.expanderWidth = BarPainter::expanderWidth;
    content.reservedWidth = std::min(width() / 2, menusWidth);
    content.isExpanded = isExpanded_;
    for (const auto* item : host_.shownItems()) {
        const int width = qRound(icon(*item).deviceIndependentSize().width());
        content.itemWidths.push_back(std::max(width, BarPainter::iconHeight) + 2 * BarPainter::iconPadding);
    }
    return content;
}

void BarWindow::layOut() {
    layout_ = layOutBar(content());
    isExpanded_ = isExpanded_ && layout_.expander;
    slots_.clear();
    const auto items = host_.shownItems();
    for (std::size_t i = 0; i < items.size(); ++i) {
        slots_.push_back({Slot::Kind::item, items[i], layout_.items[i].span, layout_.items[i].isDrawn});
    }
    if (layout_.expander) slots_.push_back({Slot::Kind::expander, nullptr, *layout_.expander, true});
    slots_.push_back({Slot::Kind::clock, nullptr, layout_.clock, true});
    update();
    Q_EMIT slotsChanged();
}

void BarWindow::toggleExpanded() {
    isExpanded_ = !isExpanded_;
    layOut();
}

void BarWindow::forget(StatusItem* item) {
    if (opened_ == item) menuClosed(item);
    icons_.erase(item);
    std::erase_if(slots_, [item](const Slot& slot) { return slot.item == item; });
    for (StatusItem** kept : {&pressed_, &dragged_}) {
        if (*kept == item) *kept = nullptr;
    }
    Q_EMIT slotRemoved(item);
}

const QPixmap& BarWindow::icon(const StatusItem& item) {
    Icon& kept = icons_[&item];
    if (kept.picture.isNull() || kept.revision != item.revision()) {
        ItemIconStyle style;
        style.height = BarPainter::iconHeight;
        style.pixelRatio = devicePixelRatio();
        style.foreground = BarPainter::foreground(palette());
        kept = {item.revision(), itemIcon(item.state(), item.title(), style)};
    }
    return kept.picture;
}

void BarWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        icons_.clear();
        update();
    }
    QWidget::changeEvent(event);
}

const BarWindow::Slot* BarWindow::slotAt(QPoint position) const {
    const auto slot = std::find_if(slots_.begin(), slots_.end(), [&](const Slot& candidate) {
        return candidate.isDrawn && position.x() >= candidate.span.x && position.x() < candidate.span.end();
    });
    return slot == slots_.end() ? nullptr : &*slot;
}

const BarWindow::Slot* BarWindow::slotOf(const StatusItem* item) const {
    const auto slot =
        std::find_if(slots_.begin(), slots_.end(), [&](const Slot& candidate) { return candidate.item == item; });
    return slot == slots_.end() ? nullptr : &*slot;
}

QPoint BarWindow::clickPosition(const StatusItem& item) const {
    const Slot* slot = slotOf(&item);
    const int x = slot ? slot->span.x + slot->span.width / 2 : 0;
    return toServer(mapToGlobal(QPoint(x, height())), *QGuiApplication::primaryScreen());
}

void BarWindow::press(StatusItem& item, Qt::MouseButton button) {
    const QPoint position = clickPosition(item);
    if (button == Qt::LeftButton) item.leftClick(position);
    if (button == Qt::RightButton) item.rightClick(position);
    if (button == Qt::MiddleButton) item.middleClick(position);
}

void BarWindow::showMenu(StatusItem* item, QMenu* menu) {
    const Slot* slot = slotOf(item);
    if (!slot || menu->isVisible()) return;
    opened_ = item;
    qApp->installEventFilter(this);
    connect(
        menu, &QMenu::aboutToHide, this, [this, item] { menuClosed(item); }, Qt::SingleShotConnection);
    menu->popup(mapToGlobal(QPoint(slot->span.x, height())));
    update();
}

void BarWindow::menuClosed(StatusItem* item) {
    qApp->removeEventFilter(this);
    if (opened_ == item) opened_ = nullptr;
    update();
}

/// An open menu takes all presses. A press on another item closes the menu and also counts for that item.
bool BarWindow::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && qobject_cast<QMenu*>(object)) {
        pressBesideMenu(*static_cast<QMouseEvent*>(event));
    }
    return QWidget::eventFilter(object, event);
}

void BarWindow::pressBesideMenu(const QMouseEvent& event) {
    const QPoint position = mapFromGlobal(event.globalPosition().toPoint());
    const Slot* slot = rect().contains(position) ? slotAt(position) : nullptr;
    if (!slot || (slot->item && slot->item == opened_)) return;
    QTimer::singleShot(0, this, [this, position, button = event.button()] {
        if (const Slot* pressed = slotAt(position)) pressSlot(*pressed, button);
    });
}

void BarWindow::pressSlot(const Slot& slot, Qt::MouseButton button) {
    // The expander lays out all slots anew, this one included.
    if (slot.kind == Slot::Kind::expander) return toggleExpanded();
    if (slot.item) press(*slot.item, button);
}

void BarWindow::mousePressEvent(QMouseEvent* event) {
    const Slot* slot = slotAt(event->position().toPoint());
    if (!slot) return;
    pressed_ = slot->item;
    update();
    const bool isDrag = event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::MetaModifier);
    if (isDrag)
        dragged_ = slot->item;
    else
        pressSlot(*slot, event->button());
}

void BarWindow::mouseMoveEvent(QMouseEvent* event) {
    if (dragged_) drag(event->position().toPoint().x());
}

void BarWindow::drag(int x) {
    const Slot* slot = slotOf(dragged_);
    // An item that hides itself has no slot any more.
    if (!slot) return;
    const auto dragged = static_cast<std::size_t>(slot - slots_.data());
    if (const auto place = dropPlace(layout_, dragged, x)) host_.move(dragged_, slots_[*place].item);
}

void BarWindow::mouseReleaseEvent(QMouseEvent*) {
    if (dragged_) host_.saveOrder();
    dragged_ = nullptr;
    pressed_ = nullptr;
    update();
}

void BarWindow::wheelEvent(QWheelEvent* event) {
    const Slot* slot = slotAt(event->position().toPoint());
    if (!slot || !slot->item) return;
    const QPoint delta = event->angleDelta();
    if (delta.y() != 0) slot->item->scroll(delta.y(), Qt::Vertical);
    if (delta.x() != 0) slot->item->scroll(delta.x(), Qt::Horizontal);
}

/// Where the part of the bar that belongs to the status items begins.
int BarWindow::itemsLeft() const {
    int left = layout_.clock.x;
    if (layout_.expander) left = layout_.expander->x;
    for (const auto& [span, isDrawn] : layout_.items) left = std::min(left, isDrawn ? span.x : left);
    return left;
}

void BarWindow::paintEvent(QPaintEvent*) {
    QPainter toolkit(this);
    BarPainter painter(toolkit, palette(), size());
    painter.paintBackground();
    painter.paintApplication(application_.name(), itemsLeft());
    for (const auto& slot : slots_) paintSlot(painter, slot);
}

void BarWindow::paintSlot(BarPainter& painter, const Slot& slot) {
    if (!slot.isDrawn) return;
    if (slot.kind == Slot::Kind::clock) return painter.paintClock(slot.span, time_);
    if (slot.kind == Slot::Kind::expander) return painter.paintExpander(slot.span, isExpanded_);
    if (slot.item == pressed_ || slot.item == opened_) painter.paintHighlight(slot.span);
    painter.paintIcon(slot.span, icon(*slot.item));
}

}  // namespace ovin
