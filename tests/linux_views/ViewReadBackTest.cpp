#include <gtest/gtest.h>

#include <QScrollBar>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/DisclosureWidget.h"
#include "platform/linux/ImageWidget.h"
#include "platform/linux/LabelWidget.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/PushButtonWidget.h"
#include "platform/linux/QtViews.h"
#include "platform/linux/SpacerWidgets.h"
#include "platform/linux/StackWidget.h"
#include "platform/linux/TextButtonWidget.h"
#include "platform/linux/UprightScroller.h"
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

std::shared_ptr<const View> shared(View view) { return std::make_shared<const View>(std::move(view)); }

constexpr double third = 13 * 1.3;

/// At least one of each kind, with lengths that are no whole pixels.
std::vector<View> oneOfEach() {
    Stack stack = SamplePages::column({{Spacer{third}}, {Separator{third}}}, third, {0.4, 1.5, 2.6, 3.3});
    stack.width = 440 * 1.3;
    stack.box = Box{{SystemColor::label, 0.07}, {SRGB{0.1, 0.2, 0.3}}, 1.5, 6.5};
    Button button;
    button.title = {{"A", Font{third}, Color{SystemColor::systemOrange}}, {"&B", {}, {}, true}};
    button.image = SizedImage{icon(), {16.4, 17.7}};
    button.imagePosition = Button::ImagePosition::leading;
    button.toolTip = "<b>A</b> & B";
    button.width = 80.5;
    button.height = 28.3;
    button.tag = -3;
    return {{stack},
            {Label{{}, {}}},
            {Label{{{"One run", {}, {}}}, {}}},
            {Label{{{"", Font{9.1}, {}}, {"Two\nlines", Font{third}, Color{SRGB{1, 0, 0}, 0.5}, true}}, 99.6, 3.9}},
            {button},
            {PushButton{"&Done <b>", Font{third, Font::Weight::bold}, KeyEquivalent::returnKey, true, 110.2, 4}},
            {PushButton{"Cancel", {}, KeyEquivalent::escape, false, {}, 5}},
            {DisclosureTriangle{false, {third}, "Details", 6}},
            {DisclosureTriangle{true, {11.5}, "", 7}},
            {TextButton{{{"A ", {}, {}}, {"link", Font{17}, Color{SystemColor::controlAccent}, true}}, "<i>Tip", true, 8}},
            {TextButton{{{"Text", {}, {}}}, "", false, 9}},
            {ImageView{icon(), {56.5, 40.2}, 12.5, "Icon"}},
            {Separator{310.7}},
            {Spacer{7.5}},
            {FlexibleSpace{}},
            {ScrollView{{120.4, 60.6}, shared({Spacer{200}}), Stack::Orientation::vertical}},
            {ScrollView{{120.4, 60.6}, shared({Separator{400}})}},
            {MenuBackground{9.5, shared({Spacer{10}})}}};
}

TEST(ViewReadBack, EveryKindReadsBackAsItWasMade) {
    for (View view : oneOfEach()) {
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
        view.isHidden = true;
        view.spacingAfter = 3.3;
        EXPECT_TRUE(readBackUnchanged(view) == view) << view.content.index();
    }
}

TEST(ViewReadBack, EveryKindReadsBackInsideEveryContainer) {
    for (const View& view : oneOfEach()) {
        const View hidden{view.content, true, 0.5};
        const std::vector<View> containers{{SamplePages::column({view, hidden, view}, 1)},
                                           SamplePages::row({hidden, view}),
                                           {ScrollView{{90, 90}, shared(view), Stack::Orientation::vertical}},
                                           {ScrollView{{90, 90}, shared(view)}},
                                           {MenuBackground{4, shared(view)}}};
        for (const View& container : containers) {
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

/// Views in which a few decisions come from a random number; the rest follows from the kinds above.
class RandomViews {
public:
    explicit RandomViews(unsigned seed) : random_(seed) {}

    View view(int depth) {
        View result = depth > 0 && chance(0.6) ? View{stack(depth)} : leaf();
        if (depth > 0 && chance(0.1)) result = {MenuBackground{length(), shared(view(depth - 1))}};
        if (depth > 0 && chance(0.1)) {
            const auto orientation = chance(0.5) ? Stack::Orientation::vertical : Stack::Orientation::horizontal;
            result = {ScrollView{{length(), length()}, shared(view(depth - 1)), orientation}};
        }
        result.isHidden = chance(0.15);
        if (chance(0.3)) result.spacingAfter = length() / 10;
        return result;
    }

private:
    bool chance(double probability) { return std::bernoulli_distribution(probability)(random_); }
    double length() { return std::uniform_real_distribution(0.0, 300.0)(random_); }
    View leaf() {
        static const std::vector<View> leaves = oneOfEach();
        return leaves[std::uniform_int_distribution<std::size_t>(0, leaves.size() - 1)(random_)];
    }

    Stack stack(int depth) {
        Stack result;
        result.orientation = chance(0.5) ? Stack::Orientation::vertical : Stack::Orientation::horizontal;
        result.alignment = static_cast<Stack::Alignment>(std::uniform_int_distribution(0, 2)(random_));
        result.spacing = length() / 10;
        result.insets = {length() / 10, length() / 10, length() / 10, length() / 10};
        if (chance(0.3)) result.width = length();
        if (chance(0.3)) result.box = Box{{SystemColor::separator}, {SystemColor::label}, length() / 100, length() / 20};
        const int count = std::uniform_int_distribution(0, 4)(random_);
        for (int i = 0; i < count; ++i) result.views.push_back(view(depth - 1));
        return result;
    }

    std::mt19937 random_;
};

TEST(ViewReadBack, RandomTreesReadBackAsTheyWereMade) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const View view = RandomViews(seed).view(4);
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
