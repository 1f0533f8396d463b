#include "platform/linux/windows/QtWindows.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QToolTip>
#include <QWindow>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/views/DisclosureWidget.h"
#include "platform/linux/views/ItemButton.h"
#include "platform/linux/views/PushButtonWidget.h"
#include "platform/linux/views/QtViews.h"
#include "platform/linux/views/SidewaysScroller.h"
#include "platform/linux/views/UprightScroller.h"
#include "platform/linux/windows/LedgeWindow.h"
#include "platform/linux/windows/QtAlerts.h"
#include "platform/linux/windows/ViewWindow.h"
#include "tests/linux/views/ViewDifference.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

class QtWindowsTest : public testing::Test {
protected:
    ~QtWindowsTest() override { handleEvents(); }

    static void handleEvents() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static std::vector<ViewWindow*> existing() {
        std::vector<ViewWindow*> found;
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const window = dynamic_cast<ViewWindow*>(widget)) found.push_back(window);
        }
        return found;
    }

    /// The only window that there is.
    static ViewWindow& window() { return *existing().at(0); }

    template <typename Widget>
    static Widget* find(QWidget& root, int tag) {
        for (QWidget* const child : root.findChildren<QWidget*>()) {
            auto* const widget = dynamic_cast<Widget*>(child);
            if (widget != nullptr && widget->tag() == tag && widget->isVisibleTo(&root)) return widget;
        }
        return nullptr;
    }

    std::unique_ptr<InformationWindow> page(
        const View& view, std::function<void(int)> clicked = [](int) {}) {
        return windows.makeInformationWindow("Page", view, std::move(clicked));
    }

    QtWindows windows;
    const Image icon{std::make_shared<NamedIcon>("text-x-generic")};
};

TEST_F(QtWindowsTest, AnInformationWindowIsHiddenUntilItIsShown) {
    const auto shown = page(SamplePages::about(icon));
    EXPECT_FALSE(window().isVisible());
    shown->show();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), "Page");
    shown->close();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(QtWindowsTest, AWindowShowsItsViewInTheFittingSize) {
    for (const View& view : {SamplePages::guide(icon, 300), SamplePages::about(icon), SamplePages::card(1.3, true),
                             SamplePages::everything(icon)}) {
        handleEvents();
        const auto shown = page(view);
        shown->show();
        auto* const content = window().findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        EXPECT_EQ(differences(*content, view), std::vector<std::string>());
        EXPECT_EQ(content->geometry(), window().rect());
        EXPECT_EQ(content->size(), content->sizeHint());
    }
}

TEST_F(QtWindowsTest, AnInformationWindowOpensInTheCentreAndThenWhereTheUserLeftIt) {
    const auto shown = page(SamplePages::about(icon));
    shown->show();
    const QPoint distance =
        window().frameGeometry().center() - QGuiApplication::primaryScreen()->availableGeometry().center();
    // The size of the frame is unknown until there is a frame.
    EXPECT_LE(distance.manhattanLength(), 8);
    window().move(37, 41);
    shown->close();
    shown->show();
    EXPECT_EQ(window().pos(), QPoint(37, 41));
}

TEST_F(QtWindowsTest, AnInformationWindowReturnsToWhereItWasWhenTheUserClosedItByOtherMeansThanItsButtons) {
    const auto shown = page(SamplePages::about(icon));
    shown->show();
    window().move(37, 41);
    window().close();
    EXPECT_FALSE(window().isVisible());
    shown->show();
    EXPECT_EQ(window().pos(), QPoint(37, 41));
}

TEST_F(QtWindowsTest, APageHasTheKeyboardFromTheStartAndScrollsToItsEnd) {
    const auto shown = page(SamplePages::guide(icon, 300));
    shown->show();
    auto* const scroller = dynamic_cast<UprightScroller*>(window().focusWidget());
    ASSERT_NE(scroller, nullptr);
    EXPECT_EQ(scroller->verticalScrollBar()->value(), 0);
    shown->scrollToEnd();
    EXPECT_GT(scroller->verticalScrollBar()->value(), 300);
    EXPECT_EQ(scroller->verticalScrollBar()->value(), scroller->verticalScrollBar()->maximum());
}

TEST_F(QtWindowsTest, APageScrollsToItsEndAlsoBeforeItIsShown) {
    const auto shown = page(SamplePages::guide(icon, 300));
    shown->scrollToEnd();
    shown->show();
    handleEvents();
    const auto* scroller = dynamic_cast<UprightScroller*>(window().focusWidget());
    ASSERT_NE(scroller, nullptr);
    EXPECT_EQ(scroller->verticalScrollBar()->value(), scroller->verticalScrollBar()->maximum());
    EXPECT_GT(scroller->verticalScrollBar()->maximum(), 300);
}

TEST_F(QtWindowsTest, AHandlerMayDestroyItsWindow) {
    std::unique_ptr<InformationWindow> shown;
    std::vector<int> clicks;
    shown = page(SamplePages::guide(icon, 300), [&](int tag) {
        clicks.push_back(tag);
        shown.reset();
    });
    shown->show();
    const QPointer<QWidget> widget = &window();
    find<PushButtonWidget>(window(), SamplePages::done)->click();
    EXPECT_TRUE(clicks.empty());
    handleEvents();
    EXPECT_EQ(clicks, std::vector<int>{SamplePages::done});
    EXPECT_EQ(shown, nullptr);
    EXPECT_TRUE(widget.isNull());
}

TEST_F(QtWindowsTest, AClickThatIsOnItsWayWhenTheWindowGoesIsForgotten) {
    int clicks = 0;
    auto shown = page(SamplePages::guide(icon, 300), [&](int) { ++clicks; });
    shown->show();
    find<PushButtonWidget>(window(), SamplePages::done)->click();
    shown.reset();
    handleEvents();
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(existing().empty());
}

/// The button of the only ledge that is open.
ItemButton* ledgeButton() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        for (QWidget* const child : widget->findChildren<QWidget*>()) {
            auto* const button = dynamic_cast<ItemButton*>(child);
            if (button != nullptr && button->isVisible()) return button;
        }
    }
    return nullptr;
}

TEST_F(QtWindowsTest, OfTwoQuickClicksOnTheLedgeOnlyTheOneThatClosesItCounts) {
    std::vector<int> clicks;
    std::unique_ptr<LedgePanel> ledge;
    ledge = windows.makeLedgePanel();
    Button button;
    button.title = {{"Item", {}, {}}};
    button.tag = 7;
    ledge->show({button}, {{100, 30}, {80, 28}}, [&](int tag) {
        clicks.push_back(tag);
        ledge.reset();
    });
    ASSERT_NE(ledgeButton(), nullptr);
    ledgeButton()->click();
    ledgeButton()->click();
    handleEvents();
    EXPECT_EQ(clicks, std::vector<int>{7});
    EXPECT_EQ(ledgeButton(), nullptr);
}

/// As the toolkit tells of it: to the widget below the pointer, and what that leaves, to those around it.
void rightMouse(QEvent::Type kind, QWidget& widget, const QPoint& place) {
    QMouseEvent event(kind, place, widget.mapToGlobal(place), Qt::RightButton,
                      kind == QEvent::MouseButtonPress ? Qt::RightButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

class QtLedgeMenuTest : public QtWindowsTest {
protected:
    void SetUp() override {
        QCursor::setPos(500, 500);
        show();
    }

    void show() {
        Button one;
        one.title = {{"One", {}, {}}};
        one.tag = 1;
        Button two = one;
        two.tag = 2;
        Stack row;
        row.orientation = Stack::Orientation::horizontal;
        row.views = {{one}, {two}};
        ledge->show(
            {row}, {{100, 30}, {160, 28}}, [this](int tag) { clicked.push_back(tag); },
            [this](int tag) {
                asked.push_back(tag);
                ledge.reset();
            });
    }

    [[nodiscard]] static ItemButton& button(int tag) {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const found = find<ItemButton>(*widget, tag)) return *found;
        }
        throw std::out_of_range("there is no such button");
    }

    std::vector<int> asked;
    std::vector<int> clicked;
    std::unique_ptr<LedgePanel> ledge = windows.makeLedgePanel();
};

TEST_F(QtLedgeMenuTest, TheReleaseOfTheRightButtonAsksForTheMenuOnceWhateverTheHandlerDestroys) {
    rightMouse(QEvent::MouseButtonPress, button(2), {5, 5});
    handleEvents();
    EXPECT_TRUE(asked.empty());
    rightMouse(QEvent::MouseButtonRelease, button(2), {5, 5});
    rightMouse(QEvent::MouseButtonRelease, button(2), {5, 5});
    handleEvents();
    EXPECT_EQ(asked, std::vector<int>{2});
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtLedgeMenuTest, AReleaseElsewhereThanThePressAsksForNothing) {
    rightMouse(QEvent::MouseButtonPress, button(1), {5, 5});
    rightMouse(QEvent::MouseButtonRelease, button(1), button(1).mapFrom(button(2).window(), button(2).geometry().center()));
    handleEvents();
    EXPECT_TRUE(asked.empty());
}

TEST_F(QtLedgeMenuTest, APressOnOtherContentAsksForNothing) {
    rightMouse(QEvent::MouseButtonPress, button(1), {5, 5});
    show();
    handleEvents();
    rightMouse(QEvent::MouseButtonRelease, button(1), {5, 5});
    handleEvents();
    EXPECT_TRUE(asked.empty());
}

TEST_F(QtWindowsTest, ALedgeThatTheSystemClosesIsToldOfOnce) {
    int dismissals = 0;
    Button button;
    auto ledge = windows.makeLedgePanel();
    ledge->onDismissal([&] {
        ++dismissals;
        ledge.reset();
    });
    ledge->show({button}, {{100, 30}, {80, 28}}, [](int) {});
    ledgeButton()->window()->close();
    EXPECT_EQ(dismissals, 0) << "not within the window's own event";
    handleEvents();
    EXPECT_EQ(dismissals, 1);
    EXPECT_EQ(ledge, nullptr);
    // The next ledge takes the window, but not the handler.
    ledge = windows.makeLedgePanel();
    ledge->show({button}, {{100, 30}, {80, 28}}, [](int) {});
    ledgeButton()->window()->close();
    handleEvents();
    EXPECT_EQ(dismissals, 1);
}

/// A click as the display's server reports it.
void clickAt(QPoint global) {
    QWindow* const window = ledgeButton()->window()->windowHandle();
    const QPoint local = window->mapFromGlobal(global);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, local, local, global, Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &event);
    }
}

TEST_F(QtWindowsTest, TheSecondPressOfADoubleClickOnTheItemPressesNoButtonThatCameUpUnderThePointer) {
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(100);
    for (const bool isUnderThePointer : {true, false}) {
        QCursor::setPos(isUnderThePointer ? QPoint(140, 44) : QPoint(400, 400));
        std::vector<int> clicks;
        const auto ledge = windows.makeLedgePanel();
        Button button;
        button.tag = 7;
        const auto show = [&] { ledge->show({button}, {{100, 30}, {80, 28}}, [&](int tag) { clicks.push_back(tag); }); };
        show();
        clickAt({140, 44});
        handleEvents();
        EXPECT_EQ(clicks.size(), isUnderThePointer ? 0U : 1U);
        // Other content does not change that.
        show();
        clickAt({140, 44});
        handleEvents();
        EXPECT_EQ(clicks.size(), isUnderThePointer ? 0U : 2U);
        QElapsedTimer waited;
        for (waited.start(); waited.elapsed() < 150;) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        clickAt({140, 44});
        handleEvents();
        EXPECT_EQ(clicks.size(), isUnderThePointer ? 1U : 3U);
    }
    QApplication::setDoubleClickInterval(interval);
}

View itemButton(const std::string& title, int tag) {
    Button button;
    button.title = {{title, {}, {}}};
    button.tag = tag;
    return {button};
}

View scrolling(const View& view) { return {ScrollView{{60, 28}, std::make_shared<const View>(view)}}; }

TEST_F(QtWindowsTest, TheNextLedgeHasTheWidgetsOfTheOneBeforeWhenItShowsTheSame) {
    std::vector<int> clicks;
    const View row = SamplePages::row({itemButton("Item", 7), itemButton("Another", 8)});
    for (const View& content : {row, scrolling(row)}) {
        ItemButton* before = nullptr;
        for (int opening = 1; opening <= 2; ++opening) {
            clicks.clear();
            const auto ledge = windows.makeLedgePanel();
            ledge->show(content, {{100, 30}, {60, 28}}, [&](int tag) { clicks.push_back(10 * opening + tag); });
            EXPECT_EQ(ledgeButton() == before, opening == 2);
            before = ledgeButton();
            QWidget* shown = before;
            while (!shown->parentWidget()->isWindow()) shown = shown->parentWidget();
            EXPECT_EQ(differences(*shown, content), std::vector<std::string>());
            ledgeButton()->click();
            handleEvents();
            EXPECT_EQ(clicks, std::vector<int>{10 * opening + 7});
        }
    }
}

TEST_F(QtWindowsTest, TheNextLedgeHasWidgetsOfItsOwnWhenFontOrColoursHaveChanged) {
    const View content = itemButton("Item", 7);
    QPointer<ItemButton> before;
    const auto isSame = [&] {
        const auto ledge = windows.makeLedgePanel();
        ledge->show(content, {{100, 30}, windows.fittingSize(content)}, [](int) {});
        return std::exchange(before, ledgeButton()) == ledgeButton();
    };
    EXPECT_FALSE(isSame());
    EXPECT_TRUE(isSame());
    const int width = before->width();
    const QFont usual = QApplication::font();
    QApplication::setFont(QFont("DejaVu Sans Mono"));
    EXPECT_FALSE(isSame());
    EXPECT_NE(before->width(), width);
    QApplication::setFont(usual);
    EXPECT_FALSE(isSame());
    QApplication::setPalette(Qt::darkGray);
    EXPECT_FALSE(isSame());
    QApplication::setPalette({});
}

TEST_F(QtWindowsTest, TheNextLedgeBeginsAtItsLeftEndWithNoButtonDownOrBelowThePointer) {
    const View content = scrolling(SamplePages::row({itemButton("Item", 7), itemButton("Another", 8)}));
    auto ledge = windows.makeLedgePanel();
    ledge->show(content, {{100, 30}, {60, 28}}, [](int) {});
    auto* const scroller = ledgeButton()->window()->findChild<SidewaysScroller*>();
    scroller->horizontalScrollBar()->setValue(20);
    const auto seen = [] { return ledgeButton()->window()->grab().toImage(); };
    EXPECT_EQ(scroller->horizontalScrollBar()->value(), 20);
    ledge.reset();
    ledge = windows.makeLedgePanel();
    ledge->show(content, {{100, 30}, {60, 28}}, [](int) {});
    EXPECT_EQ(scroller->horizontalScrollBar()->value(), 0);
    const QImage fresh = seen();
    ledgeButton()->setDown(true);
    ledgeButton()->setAttribute(Qt::WA_UnderMouse);
    EXPECT_NE(seen(), fresh);
    ledge.reset();
    ledge = windows.makeLedgePanel();
    ledge->show(content, {{100, 30}, {60, 28}}, [](int) {});
    EXPECT_EQ(seen(), fresh);
}

TEST_F(QtWindowsTest, AClickThatIsOnItsWayWhenTheLedgeGoesIsForgottenThoughTheNextOneShowsTheSame) {
    int clicks = 0;
    auto ledge = windows.makeLedgePanel();
    const auto show = [&] { ledge->show(itemButton("Item", 7), {{100, 30}, {80, 28}}, [&](int) { ++clicks; }); };
    show();
    ItemButton* const button = ledgeButton();
    button->click();
    ledge.reset();
    ledge = windows.makeLedgePanel();
    show();
    handleEvents();
    EXPECT_EQ(clicks, 0);
    ledge.reset();
    button->click();  // as an assistive program may, which still knows it
    handleEvents();
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtWindowsTest, AClickIsForTheContentThatTheButtonBelongsTo) {
    std::vector<std::string> clicks;
    const auto ledge = windows.makeLedgePanel();
    const auto show = [&](const std::string& content) {
        ledge->show(itemButton(content, 7), {{100, 30}, {80, 28}},
                    [&clicks, content](int tag) { clicks.push_back(content + " " + std::to_string(tag)); });
    };
    show("First");
    ledgeButton()->click();
    show("Second");
    handleEvents();
    EXPECT_EQ(clicks, std::vector<std::string>{"First 7"});
    ledgeButton()->click();
    handleEvents();
    EXPECT_EQ(clicks.back(), "Second 7");
}

TEST_F(QtWindowsTest, NoWidgetIsKeptOfWhatWasMeasured) {
    const auto before = QApplication::allWidgets().size();
    (void)windows.fittingSize(itemButton("Item", 7));
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

std::vector<QWidget*> ledgeWindows() {
    std::vector<QWidget*> found;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (dynamic_cast<LedgeWindow*>(widget) != nullptr) found.push_back(widget);
    }
    return found;
}

TEST_F(QtWindowsTest, ALedgeThatHasClosedKeepsNothingOfWhatItsHandlersHold) {
    const auto held = std::make_shared<int>();
    auto ledge = windows.makeLedgePanel();
    ledge->show(
        itemButton("Item", 7), {{100, 30}, {80, 28}}, [held](int) {}, [held](int) {});
    ledge.reset();
    handleEvents();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(QtWindowsTest, ALedgeDoesNotWaitForTheIconThatWindowsWithAFrameHave) {
    auto ledge = windows.makeLedgePanel();
    ledge->show(itemButton("Item", 7), {{100, 30}, {80, 28}}, [](int) {});
    EXPECT_TRUE(ledgeWindows().at(0)->windowIcon().isNull());
    const auto shown = page(SamplePages::about(icon));
    EXPECT_FALSE(window().windowIcon().isNull());
}

TEST_F(QtWindowsTest, APointerThatRestsGetsTheToolTipOfAButtonThatComesBelowIt) {
    const auto item = [](const std::string& toolTip) {
        Button button;
        button.title = {{"Item", {}, {}}};
        button.toolTip = toolTip;
        Stack row;
        row.views = {{button}};
        return View{row};
    };
    QCursor::setPos(500, 500);
    const auto ledge = windows.makeLedgePanel();
    ledge->show(item("Before"), {{100, 30}, {80, 28}}, [](int) {});
    handleEvents();
    QCursor::setPos(ledgeButton()->mapToGlobal(ledgeButton()->rect().center()));
    handleEvents();
    ledge->show(item("After"), {{100, 30}, {80, 28}}, [](int) {});
    QElapsedTimer time;
    time.start();
    while (!QToolTip::isVisible() && time.elapsed() < 10000) QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_EQ(QToolTip::text(), "<span>After</span>");
}

TEST_F(QtWindowsTest, TheNextLedgeShowsOnlyItsOwnItemsThoughItTakesTheWindowOfTheOneBefore) {
    std::vector<int> clicks;
    const auto open = [&](const std::string& title, int tag) {
        auto ledge = windows.makeLedgePanel();
        ledge->show(itemButton(title, tag), {{100, 30}, {80, 28}}, [&](int clicked) { clicks.push_back(clicked); });
        return ledge;
    };
    auto ledge = open("First", 7);
    const std::vector<QWidget*> before = ledgeWindows();
    ASSERT_EQ(before.size(), 1U);
    const QPointer<ItemButton> first = ledgeButton();
    ledge.reset();
    EXPECT_FALSE(before[0]->isVisible());
    // The event loop has not run, so the widgets of the first content are not deleted yet.
    ledge = open("Second", 8);
    EXPECT_EQ(ledgeWindows(), before);
    EXPECT_TRUE(before[0]->isVisible());
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(first->isVisible());
    first->click();
    handleEvents();
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(clicks, std::vector<int>{});
    ledgeButton()->click();
    handleEvents();
    EXPECT_EQ(clicks, std::vector<int>{8});
}

TEST_F(QtWindowsTest, AnOpenLedgeThatShowsOtherItemsHasPaintedThemAtOnce) {
    const auto ledge = windows.makeLedgePanel();
    ledge->show(itemButton("First", 1), {{100, 30}, {80, 28}}, [](int) {});
    handleEvents();
    const View row = SamplePages::row({itemButton("Second", 2), itemButton("Third", 3)});
    ledge->show(row, {{100, 30}, windows.fittingSize(row)}, [](int) {});
    QWidget& window = *ledgeWindows().at(0);
    int shown = 0;
    for (QWidget* const child : window.findChildren<QWidget*>()) {
        const auto* const button = dynamic_cast<ItemButton*>(child);
        if (button == nullptr || !button->isVisible()) continue;
        ++shown;
        EXPECT_GT(button->width(), 1);
        EXPECT_TRUE(window.rect().contains(QRect(button->mapTo(&window, QPoint()), button->size())));
    }
    EXPECT_EQ(shown, 2);
}

/// Counts how often buttons of ledges are painted.
class Paintings final : public QObject {
public:
    Paintings() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && dynamic_cast<ItemButton*>(object) != nullptr) ++count;
        return false;
    }

    int count = 0;
};

TEST_F(QtWindowsTest, AButtonIsPaintedOnceWhenItsLedgeOpens) {
    const View row = SamplePages::row({itemButton("First", 1), itemButton("Second", 2)});
    for (int opening = 1; opening <= 2; ++opening) {
        Paintings paintings;
        const auto ledge = windows.makeLedgePanel();
        ledge->show(row, {{100, 30}, windows.fittingSize(row)}, [](int) {});
        EXPECT_EQ(paintings.count, 2);
        QElapsedTimer timer;
        timer.start();
        while (!ledgeWindows().at(0)->windowHandle()->isExposed() && timer.elapsed() < 10000) handleEvents();
        handleEvents();
        EXPECT_EQ(paintings.count, 2) << "opening " << opening;
    }
}

TEST_F(QtWindowsTest, ALedgeWithFewerItemsIsSmallerThanTheOneBefore) {
    const auto menu = [](const View& row) { return View{MenuBackground{10, std::make_shared<const View>(row)}}; };
    const View many = menu(SamplePages::row({itemButton("First", 1), itemButton("Second", 2), itemButton("Third", 3)}));
    const View few = menu(SamplePages::row({itemButton("Only", 4)}));
    const auto show = [&](LedgePanel& ledge, const View& view) {
        const Size size = windows.fittingSize(view);
        ledge.show(view, {{100, 30}, size}, [](int) {});
        const QWidget* window = ledgeWindows().at(0);
        EXPECT_EQ(window->geometry(), QRectF(100, 30, size.width, size.height).toRect());
        EXPECT_EQ(window->mask().boundingRect(), window->rect());
    };
    auto ledge = windows.makeLedgePanel();
    show(*ledge, many);
    handleEvents();
    show(*ledge, few);
    show(*ledge, many);
    ledge.reset();
    handleEvents();
    ledge = windows.makeLedgePanel();
    show(*ledge, few);
    EXPECT_EQ(ledgeWindows().size(), 1U);
}

TEST_F(QtWindowsTest, TwoLedgesHaveAWindowEachAndOneOfThemIsKept) {
    auto first = windows.makeLedgePanel();
    auto second = windows.makeLedgePanel();
    first->show(itemButton("First", 1), {{100, 30}, {80, 28}}, [](int) {});
    second->show(itemButton("Second", 2), {{300, 30}, {80, 28}}, [](int) {});
    EXPECT_EQ(ledgeWindows().size(), 2U);
    first.reset();
    second.reset();
    handleEvents();
    EXPECT_EQ(ledgeWindows().size(), 1U);
}

TEST_F(QtWindowsTest, ALedgeMayOutliveTheWindowsThatMadeIt) {
    std::vector<int> clicks;
    std::unique_ptr<LedgePanel> ledge;
    {
        QtWindows others;
        ledge = others.makeLedgePanel();
    }
    ledge->show(itemButton("Item", 7), {{100, 30}, {80, 28}}, [&](int tag) { clicks.push_back(tag); });
    ledgeButton()->click();
    handleEvents();
    EXPECT_EQ(clicks, std::vector<int>{7});
    ledge.reset();
    EXPECT_EQ(ledgeWindows().size(), 0U);
}

TEST_F(QtWindowsTest, AFloatingPanelTellsThatTheUserHasClosedItAndMayGoThen) {
    std::unique_ptr<FloatingPanel> panel;
    int closed = 0;
    panel = windows.makeFloatingPanel(
        "Card", [](int) {},
        [&] {
            ++closed;
            panel.reset();
        });
    const View view = SamplePages::card(1, false);
    Size size;
    panel->show(view, [&](Size fitting) {
        size = fitting;
        return Point{50, 60};
    });
    EXPECT_EQ(size, windows.fittingSize(view));
    EXPECT_EQ(window().pos(), QPoint(50, 60));
    EXPECT_TRUE(window().testAttribute(Qt::WA_ShowWithoutActivating));
    window().close();
    EXPECT_EQ(closed, 0);
    handleEvents();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(panel, nullptr);
    EXPECT_TRUE(existing().empty());
}

TEST_F(QtWindowsTest, AFloatingPanelGoesSilently) {
    int closed = 0;
    auto panel = windows.makeFloatingPanel(
        "Card", [](int) {}, [&] { ++closed; });
    const View view = SamplePages::card(1, false);
    panel->show(view, {});
    window().close();
    panel.reset();
    handleEvents();
    EXPECT_EQ(closed, 0);
}

TEST_F(QtWindowsTest, AFloatingPanelStaysWhereTheUserMovedItAndItsButtonKeepsTheKeyboard) {
    int clicked = 0;
    auto panel = windows.makeFloatingPanel(
        "Card", [&](int tag) { clicked = tag; }, [] {});
    const View small = SamplePages::card(1, false);
    const View large = SamplePages::card(1.3, true);
    panel->show(small, [](Size) { return Point{50, 60}; });
    window().move(90, 70);
    find<DisclosureWidget>(window(), SamplePages::disclose)->setFocus(Qt::TabFocusReason);
    for (const View& view : {large, small, large}) {
        panel->replace(view);
        handleEvents();
        EXPECT_EQ(window().pos(), QPoint(90, 70));
        EXPECT_EQ(window().size().height(), static_cast<int>(windows.fittingSize(view).height));
        EXPECT_EQ(window().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
        auto* const triangle = find<DisclosureWidget>(window(), SamplePages::disclose);
        ASSERT_NE(triangle, nullptr);
        EXPECT_EQ(window().focusWidget(), triangle);
    }
    find<DisclosureWidget>(window(), SamplePages::disclose)->click();
    handleEvents();
    EXPECT_EQ(clicked, SamplePages::disclose);
}

TEST_F(QtWindowsTest, AClickOnContentThatIsReplacedMeanwhileIsDelivered) {
    int clicked = 0;
    auto panel = windows.makeFloatingPanel(
        "Card", [&](int tag) { clicked = tag; }, [] {});
    const View view = SamplePages::card(1, false);
    panel->show(view, {});
    find<DisclosureWidget>(window(), SamplePages::disclose)->click();
    panel->replace(view);
    handleEvents();
    EXPECT_EQ(clicked, SamplePages::disclose);
}

void sendMouse(QWidget& widget, QEvent::Type type, Qt::MouseButtons buttons) {
    const QPointF place = QRectF(widget.rect()).center();
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, buttons, {});
    QCoreApplication::sendEvent(&widget, &event);
}

/// A card changes by itself when items still do not fit.
TEST_F(QtWindowsTest, AButtonThatIsHeldDownWhileThePanelChangesIsClicked) {
    std::vector<int> clicks;
    auto panel = windows.makeFloatingPanel(
        "Card", [&](int tag) { clicks.push_back(tag); }, [] {});
    panel->show(SamplePages::card(1, false), {});
    const QPointer<DisclosureWidget> button = find<DisclosureWidget>(window(), SamplePages::disclose);
    sendMouse(*button, QEvent::MouseButtonPress, Qt::LeftButton);
    for (const double scale : {1.1, 1.2}) {
        panel->replace(SamplePages::card(scale, true));
        handleEvents();
        ASSERT_FALSE(button.isNull()) << "it is taken from under the finger";
    }
    sendMouse(*button, QEvent::MouseButtonRelease, Qt::NoButton);
    handleEvents();
    EXPECT_EQ(clicks, std::vector<int>{SamplePages::disclose});
    auto* const content = window().findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_EQ(differences(*content, SamplePages::card(1.2, true)), std::vector<std::string>())
        << "the last content is not shown";
}

TEST_F(QtWindowsTest, AHandlerMayDestroyItsPanelWhileContentWaits) {
    std::unique_ptr<FloatingPanel> panel;
    panel = windows.makeFloatingPanel(
        "Card", [&](int) { panel.reset(); }, [] {});
    panel->show(SamplePages::card(1, false), {});
    auto* const button = find<DisclosureWidget>(window(), SamplePages::disclose);
    sendMouse(*button, QEvent::MouseButtonPress, Qt::LeftButton);
    panel->replace(SamplePages::card(1, true));
    sendMouse(*button, QEvent::MouseButtonRelease, Qt::NoButton);
    handleEvents();
    EXPECT_EQ(panel, nullptr);
    EXPECT_TRUE(existing().empty());
}

std::vector<QMessageBox*> boxes() {
    std::vector<QMessageBox*> found;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = dynamic_cast<QMessageBox*>(widget)) found.push_back(box);
    }
    return found;
}

TEST_F(QtWindowsTest, SeveralAlertsAreShownAndEachIsAcknowledgedByItself) {
    QtAlerts alerts;
    alerts.run({"<b>First</b>", "Why & how"});
    alerts.run({"Second", ""});
    ASSERT_EQ(boxes().size(), 2U);
    QMessageBox* const first = boxes()[0]->text() == "Second" ? boxes()[1] : boxes()[0];
    EXPECT_EQ(first->text(), "<b>First</b>");
    EXPECT_EQ(first->textFormat(), Qt::PlainText);
    EXPECT_EQ(first->informativeText(), "Why & how");
    EXPECT_FALSE(first->isModal()) << "the buttons of the card must work beside it";
    EXPECT_TRUE(first->windowFlags().testFlag(Qt::WindowStaysOnTopHint)) << "the card would hide it";
    first->button(QMessageBox::Ok)->click();
    handleEvents();
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes()[0]->text(), "Second");
}

TEST_F(QtWindowsTest, AnAlertThatIsShownAlreadyIsNotShownTwice) {
    QtAlerts alerts;
    alerts.run({"First", "Why"});
    alerts.run({"First", "Otherwise"});
    alerts.run({"First", "Why"});
    EXPECT_EQ(boxes().size(), 2U);
    for (QMessageBox* const box : boxes()) box->button(QMessageBox::Ok)->click();
    // Before the boxes are deleted.
    alerts.run({"First", "Why"});
    handleEvents();
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_TRUE(boxes()[0]->isVisible());
}

TEST_F(QtWindowsTest, AlertsThatNobodyAcknowledgedGoWithTheProgram) {
    {
        QtAlerts alerts;
        alerts.run({"First", ""});
        alerts.run({"Second", ""});
        boxes()[0]->close();  // deleted later, and so perhaps after the alerts
    }
    EXPECT_TRUE(boxes().empty());
    handleEvents();
}

}  // namespace
}  // namespace ovin
