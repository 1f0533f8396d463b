#pragma once

#include <QAccessibleWidget>
#include <QObject>
#include <map>

#include "desktop/BarWindow.h"

namespace ovin {

/// The menu bar for assistive programs: one child for each slot, in the bar's order, whether its item is drawn or not.
class BarAccessible : public QAccessibleWidget {
public:
    /// Lets the toolkit make one for each `BarWindow`.
    static void install();

    explicit BarAccessible(BarWindow& bar);
    ~BarAccessible() override;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

private:
    using SlotKey = std::pair<BarWindow::Slot::Kind, StatusItem*>;

    [[nodiscard]] static SlotKey keyOf(const BarWindow::Slot& slot) { return {slot.kind, slot.item}; }
    void announceNewSlots();
    void removeStaleSlots();
    QAccessible::Id make(const BarWindow::Slot& slot);

    BarWindow& bar_;
    /// The slots that exist, by what tells them apart.
    std::map<SlotKey, QAccessible::Id> parts_;
    QObject connections_;
};

}  // namespace ovin
