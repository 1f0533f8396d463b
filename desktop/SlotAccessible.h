#pragma once

#include <QAccessibleInterface>

#include "desktop/BarWindow.h"

namespace ovin {

/// What the accessible parts of the bar that are no widgets have in common: they are where their slot is.
class BarPartAccessible : public QAccessibleInterface {
public:
    BarPartAccessible(BarWindow& bar, BarWindow::Slot::Kind kind, StatusItem* item);

    [[nodiscard]] bool isValid() const override { return slot() != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::State state() const override;

    /// The slot that this stands for or lies in; null once it is gone.
    [[nodiscard]] const BarWindow::Slot* slot() const;

protected:
    BarWindow& bar_;
    BarWindow::Slot::Kind kind_;
    StatusItem* item_;
};

/// A place of the bar. An item's slot has one child, the item, and the item's description: whoever reads the whole bar need
/// not ask each slot for its child, and the child for its description.
class SlotAccessible : public BarPartAccessible, public QAccessibleActionInterface {
public:
    SlotAccessible(BarWindow& bar, BarWindow::Slot::Kind kind, StatusItem* item);
    ~SlotAccessible() override;

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override { return item_ ? 1 : 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& action) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QAccessible::Id itemID_ = 0;
};

/// A status item of another program in its slot. Its description says where the item itself is to be found on the bus.
class ItemAccessible : public BarPartAccessible, public QAccessibleActionInterface {
public:
    ItemAccessible(BarWindow& bar, StatusItem& item, SlotAccessible& parent);

    [[nodiscard]] QAccessibleInterface* parent() const override { return &parent_; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), showMenuAction()}; }
    void doAction(const QString& action) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    SlotAccessible& parent_;
};

}  // namespace ovin
