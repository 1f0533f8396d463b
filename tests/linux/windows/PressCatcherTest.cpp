#include "platform/linux/windows/PressCatcher.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QProcess>
#include <chrono>
#include <memory>
#include <thread>

#include "platform/linux/displays/Xcb.h"
#include "platform/linux/windows/LedgeWindow.h"

namespace ovin {
namespace {

constexpr QRect ledgePlace(600, 40, 120, 40);

/// With the X server as that of a Wayland session. What lies below the pointer is asked over a connection of its own, which
/// sees what other programs would.
class PressCatcherTest : public testing::Test {
protected:
    PressCatcherTest() {
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        catcher = std::make_unique<PressCatcher>();
        ledge = std::make_unique<LedgeWindow>();
        ledge->onDismissal([this] { ++dismissals; });
        movePointer(300, 400);
    }
    ~PressCatcherTest() override {
        ledge.reset();
        catcher.reset();
        qunsetenv("WAYLAND_DISPLAY");
    }

    template <typename Condition>
    static bool becomes(Condition condition, int milliseconds = 10'000) {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < milliseconds) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    }

    static void xdotool(const QStringList& arguments) { ASSERT_EQ(QProcess::execute("xdotool", arguments), 0); }
    static void movePointer(int x, int y) { xdotool({"mousemove", QString::number(x), QString::number(y)}); }
    static void press(int button) { xdotool({"click", QString::number(button)}); }

    /// The uppermost window below the pointer that no window manager manages; none is the background or a managed window.
    [[nodiscard]] xcb_window_t below() const {
        const FromXcb<xcb_query_pointer_reply_t> pointer{
            xcb_query_pointer_reply(other.get(), xcb_query_pointer(other.get(), root()), nullptr)};
        if (!pointer || pointer->child == XCB_WINDOW_NONE) return XCB_WINDOW_NONE;
        const FromXcb<xcb_get_window_attributes_reply_t> attributes{
            xcb_get_window_attributes_reply(other.get(), xcb_get_window_attributes(other.get(), pointer->child), nullptr)};
        return attributes && attributes->override_redirect != 0 ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    [[nodiscard]] bool isCovered() const { return below() != XCB_WINDOW_NONE; }
    [[nodiscard]] xcb_window_t root() const { return xcb_setup_roots_iterator(xcb_get_setup(other.get())).data->root; }

    /// Without an event loop that runs.
    void awaitUncoveredWhileBusy() const {
        for (int i = 0; i < 1000 && isCovered(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }

    void openLedge() { ledge->present({Spacer{1}}, ledgePlace, {}, {}); }

    const XcbConnection other{xcb_connect(nullptr, nullptr)};
    std::unique_ptr<PressCatcher> catcher;
    std::unique_ptr<LedgeWindow> ledge;
    int dismissals = 0;
};

TEST_F(PressCatcherTest, TheScreenIsCoveredBelowTheLedgeWhileItIsOpen) {
    EXPECT_FALSE(isCovered());
    openLedge();
    ASSERT_TRUE(isCovered());
    const xcb_window_t cover = below();
    movePointer(ledgePlace.center().x(), ledgePlace.center().y());
    EXPECT_EQ(below(), ledge->winId());
    EXPECT_NE(cover, ledge->winId());
    movePointer(300, 400);
    ledge->dismiss();
    EXPECT_TRUE(becomes([this] { return !isCovered(); }));
}

TEST_F(PressCatcherTest, EveryButtonAndTheWheelCloseTheLedge) {
    for (const int button : {1, 2, 3, 4, 5}) {
        openLedge();
        dismissals = 0;
        press(button);
        EXPECT_TRUE(becomes([this] { return !ledge->isVisible() && dismissals == 1; })) << button;
        EXPECT_TRUE(becomes([this] { return !isCovered(); })) << button;
    }
}

TEST_F(PressCatcherTest, APressOnTheLedgeLeavesItOpen) {
    openLedge();
    movePointer(ledgePlace.center().x(), ledgePlace.center().y());
    press(2);
    movePointer(300, 400);
    EXPECT_FALSE(becomes([this] { return !ledge->isVisible() || !isCovered(); }, 300));
}

TEST_F(PressCatcherTest, TheCoverGoesAtAPressAlsoWhileTheProgramIsBusy) {
    openLedge();
    ASSERT_TRUE(isCovered());
    press(1);
    awaitUncoveredWhileBusy();
    EXPECT_FALSE(isCovered());
    EXPECT_TRUE(ledge->isVisible());
    EXPECT_TRUE(becomes([this] { return dismissals == 1; }));
}

TEST_F(PressCatcherTest, APressThatIsToldLateLeavesTheNextLedgeOpen) {
    openLedge();
    press(1);
    awaitUncoveredWhileBusy();
    ledge->dismiss();
    openLedge();
    QCoreApplication::processEvents();
    EXPECT_TRUE(ledge->isVisible());
    EXPECT_TRUE(isCovered());
}

TEST_F(PressCatcherTest, AMenuIsCoveredToo) {
    QMenu menu;
    menu.addAction("Entry");
    menu.popup({600, 40});
    ASSERT_TRUE(becomes([this] { return isCovered(); }));
    press(1);
    EXPECT_TRUE(becomes([&] { return !menu.isVisible() && !isCovered(); }));
}

TEST_F(PressCatcherTest, OfALedgeAndAMenuTheLastThatClosesTakesTheCoverAway) {
    openLedge();
    {
        QMenu menu;
        menu.addAction("Entry");
        menu.popup({600, 40});
        ledge->dismiss();
        EXPECT_TRUE(isCovered());
    }
    EXPECT_TRUE(becomes([this] { return !isCovered(); }));
}

TEST_F(PressCatcherTest, OutsideWaylandSessionsNothingIsCovered) {
    qunsetenv("WAYLAND_DISPLAY");
    catcher = std::make_unique<PressCatcher>();
    openLedge();
    EXPECT_FALSE(isCovered());
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    const QApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
