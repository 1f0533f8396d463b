#include "desktop/BarAccessible.h"

#include <QAccessible>
#include <set>
#include <utility>

#include "desktop/SlotAccessible.h"

namespace ovin {
namespace {

QAccessibleInterface* makeForBar(const QString&, QObject* object) {
    auto* bar = qobject_cast<BarWindow*>(object);
    return bar ? new BarAccessible(*bar) : nullptr;
}

void announce(QAccessible::Id part, QAccessible::Event what) {
    QAccessibleEvent event(QAccessible::accessibleInterface(part), what);
    QAccessible::updateAccessibility(&event);
}

}  // namespace

void BarAccessible::install() { QAccessible::installFactory(makeForBar); }

BarAccessible::BarAccessible(BarWindow& bar) : QAccessibleWidget(&bar, QAccessible::Window), bar_(bar) {
    for (const auto& slot : bar.barSlots()) make(slot);
    QObject::connect(&bar, &BarWindow::slotsChanged, &connections_, [this] {
        removeStaleSlots();
        announceNewSlots();
    });
    QObject::connect(&bar, &BarWindow::slotRemoved, &connections_, [this] { removeStaleSlots(); });
}

BarAccessible::~BarAccessible() {
    for (const auto& [key, id] : parts_) QAccessible::deleteAccessibleInterface(id);
}

QAccessible::Id BarAccessible::make(const BarWindow::Slot& slot) {
    const auto id = QAccessible::registerAccessibleInterface(new SlotAccessible(bar_, slot.kind, slot.item));
    parts_.emplace(keyOf(slot), id);
    return id;
}

void BarAccessible::announceNewSlots() {
    for (const auto& slot : bar_.barSlots()) {
        if (!parts_.contains(keyOf(slot))) announce(make(slot), QAccessible::ObjectCreated);
    }
}

void BarAccessible::removeStaleSlots() {
    std::set<SlotKey> present;
    for (const auto& slot : bar_.barSlots()) present.insert(keyOf(slot));
    for (auto part = parts_.begin(); part != parts_.end();) {
        if (present.contains(part->first)) {
            ++part;
            continue;
        }
        announce(part->second, QAccessible::ObjectDestroyed);
        QAccessible::deleteAccessibleInterface(part->second);
        part = parts_.erase(part);
    }
}

int BarAccessible::childCount() const { return static_cast<int>(bar_.barSlots().size()); }

QAccessibleInterface* BarAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto part = parts_.find(keyOf(bar_.barSlots()[static_cast<std::size_t>(index)]));
    return part == parts_.end() ? nullptr : QAccessible::accessibleInterface(part->second);
}

QAccessibleInterface* BarAccessible::childAt(int x, int y) const {
    for (int i = 0; i < childCount(); ++i) {
        QAccessibleInterface* part = child(i);
        if (part && part->rect().contains(x, y) && !part->state().invisible) return part;
    }
    return nullptr;
}

int BarAccessible::indexOfChild(const QAccessibleInterface* wanted) const {
    for (int i = 0; i < childCount(); ++i) {
        if (child(i) == wanted) return i;
    }
    return -1;
}

}  // namespace ovin
