#include "desktop/SlotAccessible.h"

#include <QAccessible>
#include <algorithm>

namespace ovin {

BarPartAccessible::BarPartAccessible(BarWindow& bar, BarWindow::Slot::Kind kind, StatusItem* item)
    : bar_(bar), kind_(kind), item_(item) {}

QWindow* BarPartAccessible::window() const { return bar_.windowHandle(); }

const BarWindow::Slot* BarPartAccessible::slot() const {
    const auto& all = bar_.barSlots();
    const auto slot =
        std::find_if(all.begin(), all.end(), [this](const auto& s) { return s.kind == kind_ && s.item == item_; });
    return slot == all.end() ? nullptr : &*slot;
}

QRect BarPartAccessible::rect() const {
    const auto* place = slot();
    if (!place) return {};
    return {bar_.mapToGlobal(QPoint(place->span.x, 0)), QSize(place->span.width, bar_.height())};
}

QAccessible::State BarPartAccessible::state() const {
    QAccessible::State state;
    const auto* place = slot();
    state.invisible = !place || !place->isDrawn;
    return state;
}

SlotAccessible::SlotAccessible(BarWindow& bar, BarWindow::Slot::Kind kind, StatusItem* item)
    : BarPartAccessible(bar, kind, item) {
    if (item) itemID_ = QAccessible::registerAccessibleInterface(new ItemAccessible(bar, *item, *this));
}

SlotAccessible::~SlotAccessible() {
    if (itemID_ != 0) QAccessible::deleteAccessibleInterface(itemID_);
}

QAccessibleInterface* SlotAccessible::parent() const { return QAccessible::queryAccessibleInterface(&bar_); }

QAccessibleInterface* SlotAccessible::child(int index) const {
    return item_ && index == 0 ? QAccessible::accessibleInterface(itemID_) : nullptr;
}

int SlotAccessible::indexOfChild(const QAccessibleInterface* child) const {
    return item_ && child == QAccessible::accessibleInterface(itemID_) ? 0 : -1;
}

QString SlotAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Description && slot() && item_) return QString::fromStdString(item_->address().joined());
    if (kind != QAccessible::Name) return {};
    if (kind_ == BarWindow::Slot::Kind::expander) return QStringLiteral("More items");
    return kind_ == BarWindow::Slot::Kind::clock ? QStringLiteral("Clock") : QString();
}

QAccessible::Role SlotAccessible::role() const {
    return kind_ == BarWindow::Slot::Kind::expander ? QAccessible::Button : QAccessible::Grouping;
}

void* SlotAccessible::interface_cast(QAccessible::InterfaceType type) {
    const bool acts = kind_ == BarWindow::Slot::Kind::expander && type == QAccessible::ActionInterface;
    return acts ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList SlotAccessible::actionNames() const { return {pressAction()}; }

void SlotAccessible::doAction(const QString& action) {
    if (action == pressAction()) bar_.toggleExpanded();
}

ItemAccessible::ItemAccessible(BarWindow& bar, StatusItem& item, SlotAccessible& parent)
    : BarPartAccessible(bar, BarWindow::Slot::Kind::item, &item), parent_(parent) {}

QString ItemAccessible::text(QAccessible::Text kind) const {
    if (!slot()) return {};
    if (kind == QAccessible::Name) return item_->title();
    return kind == QAccessible::Description ? QString::fromStdString(item_->address().joined()) : QString();
}

void* ItemAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

void ItemAccessible::doAction(const QString& action) {
    if (!slot()) return;
    if (action == pressAction()) bar_.press(*item_);
    if (action == showMenuAction()) bar_.press(*item_, Qt::RightButton);
}

}  // namespace ovin
