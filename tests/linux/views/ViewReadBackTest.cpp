#include <gtest/gtest.h>

#include <QScrollBar>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/applications/LinuxWorkspace.h"
#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/views/DisclosureWidget.h"
#include "platform/linux/views/ImageWidget.h"
#include "platform/linux/views/LabelWidget.h"
#include "platform/linux/views/PushButtonWidget.h"
#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/SpacerWidgets.h"
#include "platform/linux/views/StackWidget.h"
#include "platform/linux/views/TextButtonWidget.h"
#include "platform/linux/views/UprightScroller.h"
#include "tests/support/RandomViews.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

const Image& icon() {
    static const Image image(std::make_shared<NamedIcon>("text-x-generic"));
    return image;
}

View readBackAfter(const View& view, const std::function<void(QWidget&)>& change) {
    const std::unique_ptr<QWidget> widget(makeWidget(view, {}));
    change(*widget);
    return readBack(*widget);
}

View readBackUnchanged(const View& view) {
    return readBackAfter(view, [](QWidget&) {});
}

TEST(ViewReadBack, EveryKindReadsBackAsItWasMade) {
    for (View view : oneOfEach(icon())) {
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
        view.isHidden = true;
        view.spacingAfter = 3.3;
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
    }
}

TEST(ViewReadBack, EveryKindReadsBackInsideEveryContainer) {
    for (const View& view : oneOfEach(icon())) {
        for (const View& container : inEveryContainer(view)) {
            EXPECT_TRUE(readBackUnchanged(container) == container) << view.content.index();
        }
    }
}

TEST(ViewReadBack, WindowsOfEveryKindReadBackWhileTheyAreShown) {
    for (const View& view : {SamplePages::guide(icon(), 300), SamplePages::about(icon()), SamplePages::card(1, true),
                             SamplePages::card(1.3, false), SamplePages::everything(icon())}) {
        EXPECT_TRUE(readBackAfter(view, [](QWidget& widget) { widget.show(); }) == view);
    }
}

TEST(ViewReadBack, RandomTreesReadBackAsTheyWereMade) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const View view = RandomViews(seed, oneOfEach(icon())).view(4);
        EXPECT_TRUE(readBackUnchanged(view) == view) << seed;
        if (seed % 20 != 0) continue;
        const auto shownIfItMay = [&](QWidget& widget) { widget.setVisible(!view.isHidden); };
        EXPECT_TRUE(readBackAfter(view, shownIfItMay) == view) << seed;
    }
}

struct Change {
    View view;
    std::function<void(QWidget&)> change;
};

template <typename Widget>
std::function<void(QWidget&)> in(void (*change)(Widget&)) {
    return [change](QWidget& widget) { change(dynamic_cast<Widget&>(widget)); };
}

TEST(ViewReadBack, AChangedWidgetReadsBackDifferently) {
    const Label label{{{"One ", {}, {}}, {"two", Font{20}, {}}}, 99.6};
    const View column{SamplePages::column({{Spacer{3}}, {Spacer{4}}}, 5.2)};
    const View pushButton{PushButton{"Done", {}, KeyEquivalent::none, false, 90.4, 1}};
    const View textButton{TextButton{{{"Text", {}, {}}}, "Tip", false, 1}};
    const View triangle{DisclosureTriangle{false, {13}, "Details", 1}};
    const View image{ImageView{icon(), {20, 20}, 0, "Icon"}};
    const View scroll{ScrollView{{50, 50}, shared({Spacer{9}}), Stack::Orientation::vertical}};
    const std::vector<Change> changes{
        {{label}, in<LabelWidget>([](LabelWidget& widget) { widget.setText("One three"); })},
        {{label}, in<LabelWidget>([](LabelWidget& widget) { widget.setFixedWidth(101); })},
        {{label}, in<LabelWidget>([](LabelWidget& widget) { widget.setWordWrap(false); })},
        {{label}, in<QWidget>([](QWidget& widget) { widget.hide(); })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->setSpacing(6); })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->setContentsMargins(0, 1, 0, 0); })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->itemAt(1)->widget()->hide(); })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->itemAt(1)->widget()->setFixedHeight(5); })},
        {column, in<QWidget>([](QWidget& widget) { delete widget.layout()->itemAt(0)->widget(); })},
        {column, in<QWidget>([](QWidget& widget) { setSpacingAfter(*widget.layout()->itemAt(0)->widget(), 1); })},
        {pushButton, in<PushButtonWidget>([](PushButtonWidget& widget) { widget.setText("Other"); })},
        {pushButton, in<PushButtonWidget>([](PushButtonWidget& widget) { widget.setFixedWidth(91); })},
        {textButton, in<TextButtonWidget>([](TextButtonWidget& widget) { widget.setText("Other"); })},
        {textButton, in<TextButtonWidget>([](TextButtonWidget& widget) { widget.setCursor(Qt::PointingHandCursor); })},
        {textButton, in<QWidget>([](QWidget& widget) { setPlainToolTip(widget, "Other"); })},
        {triangle, in<DisclosureWidget>([](DisclosureWidget& widget) { widget.setChecked(true); })},
        {triangle, in<DisclosureWidget>([](DisclosureWidget& widget) { widget.setAccessibleName("Other"); })},
        {image, in<ImageWidget>([](ImageWidget& widget) { widget.setFixedSize(20, 21); })},
        {{Separator{10}}, in<QWidget>([](QWidget& widget) { widget.setFixedWidth(11); })},
        {{Spacer{10.4}}, in<QWidget>([](QWidget& widget) { widget.setFixedHeight(11); })},
        {scroll, in<UprightScroller>([](UprightScroller& widget) { widget.setFixedHeight(51); })},
        {scroll, in<UprightScroller>([](UprightScroller& widget) { widget.widget()->setFixedHeight(8); })}};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        EXPECT_TRUE(readBackUnchanged(changes[i].view) == changes[i].view) << i;
        EXPECT_FALSE(readBackAfter(changes[i].view, changes[i].change) == changes[i].view) << i;
    }
}

}  // namespace
}  // namespace ovin
