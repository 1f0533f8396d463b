#include "platform/linux/views/QtViews.h"

#include <vector>

#include "platform/linux/views/DisclosureWidget.h"
#include "platform/linux/views/ImageWidget.h"
#include "platform/linux/views/ItemButton.h"
#include "platform/linux/views/LabelWidget.h"
#include "platform/linux/views/MenuBackgroundWidget.h"
#include "platform/linux/views/PushButtonWidget.h"
#include "platform/linux/views/SeparatorWidget.h"
#include "platform/linux/views/SidewaysScroller.h"
#include "platform/linux/views/StackWidget.h"
#include "platform/linux/views/TextButtonWidget.h"
#include "platform/linux/views/UprightScroller.h"
#include "platform/linux/views/ViewAccessibles.h"

namespace ovin {
namespace {

using Clicked = std::function<void(int tag)>;

struct Make {
    const Clicked& clicked;

    QWidget* operator()(const Stack& stack) const {
        std::vector<QWidget*> views;
        for (const View& view : stack.views) views.push_back(makeWidget(view, clicked));
        return new StackWidget(stack, views);
    }
    QWidget* operator()(const Label& label) const { return new LabelWidget(label); }
    QWidget* operator()(const Button& button) const { return clickable(new ItemButton(button)); }
    QWidget* operator()(const PushButton& button) const { return clickable(new PushButtonWidget(button)); }
    QWidget* operator()(const DisclosureTriangle& triangle) const { return clickable(new DisclosureWidget(triangle)); }
    QWidget* operator()(const TextButton& button) const { return clickable(new TextButtonWidget(button)); }
    QWidget* operator()(const ImageView& image) const { return new ImageWidget(image); }
    QWidget* operator()(const Separator& separator) const { return new SeparatorWidget(separator); }
    QWidget* operator()(const Spacer& spacer) const {
        auto* const space = new QWidget;
        space->setFixedSize(1, qRound(spacer.height));
        return space;
    }
    QWidget* operator()(const FlexibleSpace&) const {
        auto* const space = new QWidget;
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        return space;
    }
    QWidget* operator()(const ScrollView& scroll) const {
        QWidget* const content = makeWidget(*scroll.content, clicked);
        if (scroll.orientation == Stack::Orientation::vertical) return new UprightScroller(content, scroll.size);
        return new SidewaysScroller(content, scroll.size);
    }
    QWidget* operator()(const MenuBackground& background) const {
        return new MenuBackgroundWidget(makeWidget(*background.content, clicked), background.cornerRadius);
    }

private:
    QWidget* clickable(PressButton* button) const {
        // Queued, because the handler may delete the button while it still handles the click.
        QObject::connect(
            button, &PressButton::clicked, button, [clicked = clicked, tag = button->tag()] { clicked(tag); },
            Qt::QueuedConnection);
        return button;
    }
};

}  // namespace

QWidget* makeWidget(const View& view, const std::function<void(int tag)>& clicked) {
    installViewAccessibles();
    QWidget* const widget = std::visit(Make{clicked}, view.content);
    if (view.isHidden) widget->hide();
    return widget;
}

}  // namespace ovin
