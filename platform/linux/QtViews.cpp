#include "platform/linux/QtViews.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <memory>
#include <utility>

#include "platform/linux/ItemButton.h"
#include "platform/linux/MenuBackgroundWidget.h"
#include "platform/linux/QtColors.h"
#include "platform/linux/QtFonts.h"
#include "platform/linux/SidewaysScroller.h"

namespace ovin {
namespace {

using Clicked = std::function<void(int tag)>;

constexpr double defaultFontSize = 13;

Qt::Alignment qtAlignment(Stack::Alignment alignment) {
    switch (alignment) {
        case Stack::Alignment::center:
            return Qt::AlignVCenter;
        case Stack::Alignment::top:
            return Qt::AlignTop;
        case Stack::Alignment::leading:
            return Qt::AlignLeft;
    }
    return {};
}

Stack::Alignment stackAlignment(Qt::Alignment alignment) {
    if (alignment.testFlag(Qt::AlignTop)) return Stack::Alignment::top;
    return alignment.testFlag(Qt::AlignLeft) ? Stack::Alignment::leading : Stack::Alignment::center;
}

/// A stack's alignment is a property of its own, as a layout without widgets has none.
class StackWidget final : public QWidget {
public:
    StackWidget(const Stack& stack, const Clicked& clicked)
        : layout_(stack.orientation == Stack::Orientation::horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom,
                  this),
          alignment_(qtAlignment(stack.alignment)) {
        const Insets& insets = stack.insets;
        layout_.setContentsMargins(qRound(insets.left), qRound(insets.top), qRound(insets.right), qRound(insets.bottom));
        layout_.setSpacing(qRound(stack.spacing));
        for (const View& view : stack.views) layout_.addWidget(makeWidget(view, clicked), 0, alignment_);
    }

    [[nodiscard]] Stack description() const {
        Stack stack;
        const bool isHorizontal = layout_.direction() == QBoxLayout::LeftToRight;
        stack.orientation = isHorizontal ? Stack::Orientation::horizontal : Stack::Orientation::vertical;
        stack.alignment = stackAlignment(alignment_);
        stack.spacing = layout_.spacing();
        const QMargins margins = layout_.contentsMargins();
        stack.insets = {static_cast<double>(margins.top()), static_cast<double>(margins.left()),
                        static_cast<double>(margins.bottom()), static_cast<double>(margins.right())};
        for (int i = 0; i < layout_.count(); ++i) stack.views.push_back(readBack(*layout_.itemAt(i)->widget()));
        return stack;
    }

private:
    QBoxLayout layout_;
    Qt::Alignment alignment_;
};

/// A label of one run of text, which is all that the ledge has.
class LabelWidget final : public QLabel {
public:
    explicit LabelWidget(const Label& label) : run_(label.text.empty() ? TextRun{} : label.text.front()) {
        setTextFormat(Qt::PlainText);
        setText(QString::fromStdString(run_.text));
        setFont(qtFont(run_.font.value_or(Font{defaultFontSize, Font::Weight::regular})));
        if (label.wrapWidth) {
            setWordWrap(true);
            setFixedWidth(qRound(*label.wrapWidth));
        }
        applyColor();
    }

    [[nodiscard]] Label description() const {
        Label label;
        TextRun run = run_;
        run.text = text().toStdString();
        label.text = {std::move(run)};
        if (wordWrap()) label.wrapWidth = width();
        return label;
    }

protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::ApplicationPaletteChange) applyColor();
    }

private:
    /// The palette of the application, not the label's own, which has the colour already.
    void applyColor() {
        if (!run_.color) return;
        QPalette own = palette();
        own.setColor(QPalette::WindowText, qtColor(*run_.color, QPalette()));
        setPalette(own);
    }

    TextRun run_;
};

struct Make {
    const Clicked& clicked;

    QWidget* operator()(const Stack& stack) const { return new StackWidget(stack, clicked); }
    QWidget* operator()(const Label& label) const { return new LabelWidget(label); }
    QWidget* operator()(const Button& button) const {
        auto* const widget = new ItemButton(button);
        // Later, because the handler may delete the button while it still deals with the click.
        QObject::connect(
            widget, &QAbstractButton::clicked, widget, [clicked = clicked, tag = button.tag] { clicked(tag); },
            Qt::QueuedConnection);
        return widget;
    }
    // Not there yet.
    template <typename Other>
    QWidget* operator()(const Other&) const {
        return new QWidget();
    }
    QWidget* operator()(const ScrollView& scroll) const {
        return new SidewaysScroller(makeWidget(*scroll.content, clicked),
                                    QSizeF(scroll.size.width, scroll.size.height).toSize());
    }
    QWidget* operator()(const MenuBackground& background) const {
        return new MenuBackgroundWidget(makeWidget(*background.content, clicked), background.cornerRadius);
    }
};

}  // namespace

QWidget* makeWidget(const View& view, const std::function<void(int tag)>& clicked) {
    return std::visit(Make{clicked}, view.content);
}

View readBack(const QWidget& widget) {
    if (const auto* stack = dynamic_cast<const StackWidget*>(&widget)) return {stack->description()};
    if (const auto* button = dynamic_cast<const ItemButton*>(&widget)) return {button->description()};
    if (const auto* scroller = dynamic_cast<const SidewaysScroller*>(&widget)) {
        const QSize size = scroller->size();
        return {ScrollView{{static_cast<double>(size.width()), static_cast<double>(size.height())},
                           std::make_shared<const View>(readBack(*scroller->widget()))}};
    }
    if (const auto* background = dynamic_cast<const MenuBackgroundWidget*>(&widget)) {
        return {MenuBackground{background->cornerRadius(), std::make_shared<const View>(readBack(background->content()))}};
    }
    return {dynamic_cast<const LabelWidget&>(widget).description()};
}

}  // namespace ovin
