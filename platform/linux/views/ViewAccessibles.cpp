#include "platform/linux/views/ViewAccessibles.h"

#include <QAccessibleWidget>

#include "platform/linux/views/DisclosureWidget.h"
#include "platform/linux/views/ImageWidget.h"
#include "platform/linux/views/TextButtonWidget.h"

namespace ovin {
namespace {

/// A button whose action is always a press: the toolkit would toggle a checkable one without a click.
class PressAccessible final : public QAccessibleWidget {
public:
    PressAccessible(PressButton& button, QAccessible::Role role) : QAccessibleWidget(&button, role), button_(button) {}

    [[nodiscard]] QStringList actionNames() const override {
        return button_.isEnabled() ? QStringList{pressAction(), setFocusAction()} : QStringList{};
    }

    void doAction(const QString& name) override {
        if (!button_.isEnabled()) return;
        if (name == pressAction()) return button_.click();
        QAccessibleWidget::doAction(name);
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (!button_.isCheckable()) return state;
        state.checkable = true;
        state.checked = button_.isChecked();
        state.expandable = true;
        state.expanded = button_.isChecked();
        state.collapsed = !button_.isChecked();
        return state;
    }

private:
    PressButton& button_;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    if (auto* const triangle = qobject_cast<DisclosureWidget*>(object)) {
        return new PressAccessible(*triangle, QAccessible::Button);
    }
    if (auto* const text = qobject_cast<TextButtonWidget*>(object)) {
        return new PressAccessible(*text, text->isLink() ? QAccessible::Link : QAccessible::Button);
    }
    auto* const image = qobject_cast<ImageWidget*>(object);
    // Decorative pictures are not announced.
    if (image == nullptr || image->accessibleName().isEmpty()) return nullptr;
    return new QAccessibleWidget(image, QAccessible::Graphic);
}

}  // namespace

void installViewAccessibles() {
    // May be repeated, because the toolkit keeps each factory only once.
    QAccessible::installFactory(makeAccessible);
}

}  // namespace ovin
