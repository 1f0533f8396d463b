#include "platform/linux/views/QtViews.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ledge/LedgeView.h"
#include "platform/linux/drawing/IconLoader.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/drawing/QtDrawing.h"
#include "platform/linux/views/ItemButton.h"
#include "platform/linux/windows/QtWindows.h"
#include "platform/memory/MemoryWorld.h"
#include "tests/linux/views/ViewDifference.h"

namespace ovin {
namespace {

class QtViewsTest : public testing::Test {
protected:
    MemoryWorld world;
    MemoryElement root = world.accessibility.launch(1);
    const Image icon{std::make_shared<NamedIcon>("text-x-generic")};

    DiscoveredItem item(const std::string& name, std::optional<Image> image, std::optional<std::string> label) {
        return {root.element(), name, std::move(image), "Title", 1, {}, std::move(label)};
    }

    static std::vector<std::string> differencesWhileShown(const View& view) {
        const std::unique_ptr<QWidget> widget(makeWidget(view, {}));
        widget->show();
        return differences(*widget, view);
    }
};

TEST_F(QtViewsTest, EveryKindOfLedgeReadsBackAsItWasShown) {
    const std::vector<DiscoveredItem> items{item("App", icon, {}), item("App", icon, "Label"), item("App", {}, "Label"),
                                            item("App", {}, {}), item("<b>&amp;", {}, "<i>&x")};
    for (const auto& shown : {items, {}}) {
        const View row = ledgeRow(world.text, shown, "");
        for (const double width : {40.0, 2000.0}) {
            const View view = ledgeContent(row, QtWindows().fittingSize(row), width).view;
            EXPECT_EQ(differencesWhileShown(view), std::vector<std::string>());
        }
    }
}

TEST_F(QtViewsTest, AVerticalStackAndAParagraphReadBackAsTheyWereShown) {
    Stack stack;
    stack.orientation = Stack::Orientation::vertical;
    stack.alignment = Stack::Alignment::leading;
    stack.spacing = 7;
    stack.insets = {1, 2, 3, 4};
    stack.views = {{Label{{{"A paragraph", Font{12, Font::Weight::semibold}, Color{SystemColor::label}}}, 120}},
                   {Label{{{"A line", {}, {}}}, {}}}};
    EXPECT_EQ(differencesWhileShown({stack}), std::vector<std::string>());
}

TEST_F(QtViewsTest, AChangedWidgetReadsBackDifferently) {
    const View row = ledgeRow(world.text, {item("App", {}, "Label")}, "");
    const std::unique_ptr<QWidget> widget(makeWidget(row, {}));
    widget->findChild<ItemButton*>()->setText("Other");
    EXPECT_FALSE(differences(*widget, row).empty());
}

TEST_F(QtViewsTest, ButtonsAreAsLargeAsTheySay) {
    const View row = ledgeRow(world.text, {item("App", icon, {})}, "");
    EXPECT_EQ(QtWindows().fittingSize(row), (Size{28 + 20, 28 + 12}));
}

TEST_F(QtViewsTest, EveryButtonIsCalledByItsToolTip) {
    const View row = ledgeRow(world.text, {item("<b>App</b>", icon, {})}, "");
    const std::unique_ptr<QWidget> widget(makeWidget(row, {}));
    EXPECT_EQ(widget->findChild<ItemButton*>()->accessibleName(), "<b>App</b> — Title");
}

TEST_F(QtViewsTest, AClickDeliversTheTagEvenWhenTheHandlerDeletesTheButton) {
    const View row = ledgeRow(world.text, std::vector(3, item("App", icon, {})), "");
    std::unique_ptr<QWidget> widget;
    int clicked = -1;
    widget.reset(makeWidget(row, [&](int tag) {
        clicked = tag;
        widget.reset();
    }));
    widget->findChildren<ItemButton*>().at(2)->click();
    QCoreApplication::processEvents();
    EXPECT_EQ(clicked, 2);
    EXPECT_EQ(widget, nullptr);
}

/// The button that the ledge shows for an application with this icon, at first.
class IconOnTheLedge : public QtViewsTest {
protected:
    IconOnTheLedge() {
        IconLoader::share(std::make_unique<IconLoader>(OVIN_PROGRAM));
        QImage picture(22, 22, QImage::Format_RGB32);
        picture.fill(Qt::red);
        EXPECT_TRUE(picture.save(QString::fromStdString(red)));
    }
    ~IconOnTheLedge() override { delete IconLoader::shared(); }

    const QTemporaryDir folder;
    const std::string red = folder.filePath("red.png").toStdString();

    static std::shared_ptr<const ItemIcon> itemIcon(const std::string& name) {
        return std::make_shared<ItemIcon>(name, "", ItemIcon::Pixels{});
    }
    static std::shared_ptr<LatestItemIcon> latest(const std::string& name) {
        return std::make_shared<LatestItemIcon>(itemIcon(name));
    }

    QWidget* button(const Image& image) { return makeWidget(ledgeRow(world.text, {item("App", image, {})}, ""), {}); }

    /// Whether the button, painted again and again, shows this colour before long.
    bool comesToShow(const Image& image, QColor colour) {
        const std::unique_ptr<QWidget> widget(button(image));
        widget->show();
        return comesToShow(*widget, colour);
    }
    static bool shows(QWidget& widget, QColor colour) {
        const QImage seen = widget.grab().toImage();
        for (int pixel = 0; pixel < seen.width() * seen.height(); ++pixel) {
            if (seen.pixelColor(pixel % seen.width(), pixel / seen.width()) == colour) return true;
        }
        return false;
    }
    static bool comesToShow(QWidget& widget, QColor colour) {
        const QDeadlineTimer deadline(20'000);
        for (;;) {
            if (shows(widget, colour)) return true;
            if (deadline.hasExpired()) return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
    }
};

TEST_F(IconOnTheLedge, ComesLater) { EXPECT_TRUE(comesToShow(Image(std::make_shared<NamedIcon>(red)), Qt::red)); }

TEST_F(IconOnTheLedge, IsTheApplicationsWhereTheItemsNameLeadsNowhere) {
    EXPECT_TRUE(comesToShow(Image(std::make_shared<ItemOrApplicationIcon>(latest("/nowhere.png"), red)), Qt::red));
    EXPECT_TRUE(comesToShow(Image(std::make_shared<ItemOrApplicationIcon>(latest(red), "/nowhere.png")), Qt::red));
}

TEST_F(IconOnTheLedge, IsTheItemsLatestAlsoWhenItIsReadWhileTheButtonIsShown) {
    const auto itemsIcon = latest("/nowhere.png");
    const std::unique_ptr<QWidget> shown(button(Image(std::make_shared<ItemOrApplicationIcon>(itemsIcon, red))));
    shown->show();
    EXPECT_TRUE(comesToShow(*shown, Qt::red));
    QImage picture(22, 22, QImage::Format_RGB32);
    picture.fill(Qt::green);
    const std::string green = folder.filePath("green.png").toStdString();
    ASSERT_TRUE(picture.save(QString::fromStdString(green)));
    std::thread([&] { itemsIcon->set(itemIcon(green)); }).join();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    EXPECT_TRUE(shows(*shown, Qt::red)) << "the other has not come";
    EXPECT_TRUE(comesToShow(*shown, Qt::green));
}

TEST_F(IconOnTheLedge, IsTheItemsLatestWhenTheButtonIsShownAgainThoughItWasNotToldOfThat) {
    const auto pixelOf = [](const QColor& colour) {
        const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
        const BusValue::Bytes bytes{255, byte(colour.red()), byte(colour.green()), byte(colour.blue())};
        return std::make_shared<ItemIcon>("", "", ItemIcon::Pixels{1, 1, bytes});
    };
    const auto itemsIcon = std::make_shared<LatestItemIcon>(pixelOf(Qt::red));
    const std::unique_ptr<QWidget> shown(button(Image(std::make_shared<ItemOrApplicationIcon>(itemsIcon, ""))));
    shown->show();
    EXPECT_TRUE(shows(*shown, Qt::red));
    itemsIcon->set(pixelOf(Qt::green));
    shown->hide();
    // As a ledge that closes drops clicks.
    for (QObject* const child : shown->findChildren<QObject*>())
        QCoreApplication::removePostedEvents(child, QEvent::MetaCall);
    shown->show();
    EXPECT_TRUE(shows(*shown, Qt::green));
}

TEST_F(IconOnTheLedge, IsReadAgainWhenTheSameButtonIsShownAgain) {
    const std::unique_ptr<QWidget> shown(button(Image(std::make_shared<NamedIcon>(red))));
    shown->show();
    EXPECT_TRUE(comesToShow(*shown, Qt::red));
    QImage picture(22, 22, QImage::Format_RGB32);
    picture.fill(Qt::green);
    ASSERT_TRUE(picture.save(QString::fromStdString(red)));
    shown->hide();
    shown->show();
    EXPECT_TRUE(comesToShow(*shown, Qt::green));
}

TEST_F(IconOnTheLedge, OutlivesItsButton) {
    const auto itemsIcon = latest(red);
    delete button(Image(std::make_shared<ItemOrApplicationIcon>(itemsIcon, "")));
    itemsIcon->set(itemIcon("/nowhere.png"));
    QCoreApplication::processEvents();
}

TEST_F(IconOnTheLedge, IsReadAgainWhenTheLedgeOpensAlsoWhereItIsTheApplications) {
    const Image image(std::make_shared<ItemOrApplicationIcon>(latest("/nowhere.png"), red));
    EXPECT_TRUE(comesToShow(image, Qt::red));
    QImage picture(22, 22, QImage::Format_RGB32);
    picture.fill(Qt::green);
    ASSERT_TRUE(picture.save(QString::fromStdString(red)));
    EXPECT_TRUE(comesToShow(image, Qt::green));
}

TEST_F(IconOnTheLedge, IsTheApplicationsInitialsWhereThereIsNone) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::blue);
    QApplication::setPalette(palette);
    EXPECT_TRUE(comesToShow(Image(std::make_shared<NamedIcon>("/nowhere.png")), Qt::blue));
    QApplication::setPalette({});
}

TEST_F(QtViewsTest, AnOutlineStaysInsideItsShape) {
    DrawnShape shape;
    shape.rect = {{2, 2}, {6, 6}};
    shape.fill = {SRGB{1, 0, 0}};
    shape.outline = InnerOutline{{SRGB{0, 0, 1}}, 2};
    const DrawnImage image{{10, 10}, "", [&](Appearance) { return std::vector{shape}; }};
    const QImage picture = rendered(image, 1, QPalette());
    EXPECT_EQ(picture.pixelColor(5, 5), QColor(255, 0, 0));
    EXPECT_EQ(picture.pixelColor(2, 5), QColor(0, 0, 255));
    EXPECT_EQ(picture.pixelColor(1, 5).alpha(), 0);
}

TEST_F(QtViewsTest, ImagesCountFromTheBottom) {
    DrawnShape shape;
    shape.rect = {{0, 0}, {10, 2}};
    shape.fill = {SRGB{1, 0, 0}};
    const DrawnImage image{{10, 10}, "", [&](Appearance) { return std::vector{shape}; }};
    const QImage picture = rendered(image, 2, QPalette());
    EXPECT_EQ(picture.size(), QSize(20, 20));
    EXPECT_EQ(picture.pixelColor(10, 19).alpha(), 255);
    EXPECT_EQ(picture.pixelColor(10, 0).alpha(), 0);
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argumentCount, arguments);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
