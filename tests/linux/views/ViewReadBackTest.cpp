#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/StackLayout.h"
#include "tests/linux/views/ViewDifference.h"
#include "tests/support/RandomViews.h"
#include "tests/support/SamplePages.h"
#include "tests/support/ViewSearch.h"

namespace ovin {
namespace {

using Differences = std::vector<std::string>;

/// A picture with sides and pixels of its own.
const Image& icon() {
    static const Image image = [] {
        constexpr int width = 40;
        constexpr int height = 20;
        BusValue::Bytes bytes;
        for (int pixel = 0; pixel < width * height; ++pixel) {
            for (const int part : {255, pixel % 200, pixel % 90, 7}) bytes.push_back(static_cast<std::uint8_t>(part));
        }
        auto icon = std::make_shared<const ItemIcon>("", "", ItemIcon::Pixels{width, height, std::move(bytes)});
        return Image(std::make_shared<ItemOrApplicationIcon>(std::make_shared<LatestItemIcon>(std::move(icon)), ""));
    }();
    return image;
}

Differences differencesAfter(const View& view, const std::function<void(QWidget&)>& change) {
    const std::unique_ptr<QWidget> widget(makeWidget(view, {}));
    change(*widget);
    return differences(*widget, view);
}

void collectTags(const View& view, std::vector<int>& tags) {
    std::visit(
        [&](const auto& content) {
            if constexpr (requires { content.tag; }) tags.push_back(content.tag);
            if constexpr (requires { content.content; }) collectTags(*content.content, tags);
            if constexpr (requires { content.views; }) {
                for (const View& one : content.views) collectTags(one, tags);
            }
        },
        view.content);
}

/// Of the widgets as they were made; and that each button delivers its tag.
Differences differencesOf(const View& view) {
    std::vector<int> clicks;
    const std::unique_ptr<QWidget> widget(makeWidget(view, [&](int tag) { clicks.push_back(tag); }));
    Differences found = differences(*widget, view);
    if (auto* const itself = dynamic_cast<QAbstractButton*>(widget.get())) itself->click();
    for (auto* const button : widget->findChildren<QAbstractButton*>()) button->click();
    QCoreApplication::processEvents();
    std::vector<int> tags;
    collectTags(view, tags);
    if (clicks != tags) found.emplace_back("tags");
    return found;
}

TEST(ViewReadBack, EveryKindReadsBackAsItWasMade) {
    for (View view : oneOfEach(icon())) {
        EXPECT_EQ(differencesOf(view), Differences());
        view.isHidden = true;
        view.spacingAfter = 3.3;
        EXPECT_EQ(differencesOf(view), Differences());
    }
}

TEST(ViewReadBack, EveryKindReadsBackInsideEveryContainer) {
    for (const View& view : oneOfEach(icon())) {
        for (const View& container : inEveryContainer(view)) EXPECT_EQ(differencesOf(container), Differences());
    }
}

TEST(ViewReadBack, WindowsOfEveryKindReadBackWhileTheyAreShown) {
    for (const View& view : {SamplePages::guide(icon(), 300), SamplePages::about(icon()), SamplePages::card(1, true),
                             SamplePages::card(1.3, false), SamplePages::everything(icon())}) {
        EXPECT_EQ(differencesAfter(view, [](QWidget& widget) { widget.show(); }), Differences());
    }
}

TEST(ViewReadBack, RandomTreesReadBackAsTheyWereMade) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const View view = RandomViews(seed, oneOfEach(icon())).view(4);
        EXPECT_EQ(differencesOf(view), Differences()) << seed;
        if (seed % 20 != 0) continue;
        const auto shownIfItMay = [&](QWidget& widget) { widget.setVisible(!view.isHidden); };
        EXPECT_EQ(differencesAfter(view, shownIfItMay), Differences()) << seed;
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
        {{label}, in<QLabel>([](QLabel& widget) { widget.setText("One three"); })},
        {{label}, in<QWidget>([](QWidget& widget) { widget.setFixedWidth(101); })},
        {{label}, in<QLabel>([](QLabel& widget) { widget.setWordWrap(false); })},
        {{label}, in<QWidget>([](QWidget& widget) { widget.hide(); })},
        {column, in<QWidget>([](QWidget& widget) {
             auto& layout = dynamic_cast<StackLayout&>(*widget.layout());
             for (int i = 0; i < 2; ++i) layout.add(std::unique_ptr<QLayoutItem>(layout.takeAt(0))->widget(), 6);
         })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->setContentsMargins(0, 1, 0, 0); })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->itemAt(1)->widget()->hide(); })},
        {column, in<QWidget>([](QWidget& widget) { widget.layout()->itemAt(1)->widget()->setFixedHeight(5); })},
        {column, in<QWidget>([](QWidget& widget) { delete widget.layout()->itemAt(0)->widget(); })},
        {pushButton, in<QAbstractButton>([](QAbstractButton& widget) { widget.setText("Other"); })},
        {pushButton, in<QWidget>([](QWidget& widget) { widget.setFixedWidth(91); })},
        {textButton, in<QAbstractButton>([](QAbstractButton& widget) { widget.setText("Other"); })},
        {textButton, in<QWidget>([](QWidget& widget) { widget.setCursor(Qt::PointingHandCursor); })},
        {textButton, in<QWidget>([](QWidget& widget) { widget.setToolTip("Other"); })},
        {triangle, in<QAbstractButton>([](QAbstractButton& widget) { widget.setChecked(true); })},
        {triangle, in<QWidget>([](QWidget& widget) { widget.setAccessibleName("Other"); })},
        {image, in<QWidget>([](QWidget& widget) { widget.setFixedSize(20, 21); })},
        {{Separator{10}}, in<QWidget>([](QWidget& widget) { widget.setFixedWidth(11); })},
        {{Spacer{10.4}}, in<QWidget>([](QWidget& widget) { widget.setFixedHeight(11); })},
        {scroll, in<QWidget>([](QWidget& widget) { widget.setFixedHeight(51); })},
        {scroll, in<QScrollArea>([](QScrollArea& widget) { widget.widget()->setFixedHeight(8); })}};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        EXPECT_EQ(differencesOf(changes[i].view), Differences());
        EXPECT_NE(differencesAfter(changes[i].view, changes[i].change), Differences()) << i;
    }
}

}  // namespace
}  // namespace ovin
