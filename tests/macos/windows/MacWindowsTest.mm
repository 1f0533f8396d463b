#include "platform/macos/windows/MacWindows.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <memory>
#include <vector>

#include "platform/macos/displays/Coordinates.h"
#include "platform/macos/drawing/NativeImages.h"
#include "tests/contract/MacUser.h"
#include "tests/support/SamplePages.h"

namespace ovin {
namespace {

class MacWindowsTest : public testing::Test {
protected:
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }

    /// Runs the event loop for as long as anything that is under way may take.
    static void turnRunLoop() { [NSRunLoop.mainRunLoop runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.05]]; }

    static NSWindow* window() { return MacUser::window(); }

    static NSButton* find(NSView* root, int tag) {
        if ([root isKindOfClass:NSButton.class] && static_cast<NSButton*>(root).tag == tag)
            return static_cast<NSButton*>(root);
        for (NSView* view in root.subviews) {
            if (NSButton* found = find(view, tag)) return found;
        }
        return nil;
    }

    static NSButton* button(int tag) { return find(window().contentView, tag); }

    const std::unique_ptr<Windows> windows = makeMacWindows();
    const Image icon = makeImage([] { return [NSImage imageNamed:NSImageNameApplicationIcon]; });
};

TEST_F(MacWindowsTest, APageComesUpOnTheScreenThatTheUserWorksOn) {
    const View view = SamplePages::guide(icon, 300);
    const auto shown = windows->makeInformationWindow("Page", view, [](int) {});
    NSScreen* screen = NSScreen.mainScreen;
    shown->show();
    EXPECT_EQ(window().screen, screen);
}

TEST_F(MacWindowsTest, AWindowHasTheFittingSizeOfItsView) {
    const View view = SamplePages::about(icon);
    const Size size = windows->fittingSize(view);
    const auto shown = windows->makeInformationWindow("About", view, [](int) {});
    shown->show();
    EXPECT_GT(size.width, 250);
    EXPECT_GT(size.height, 250);
    EXPECT_NEAR(window().frame.size.width, size.width, 1);
    EXPECT_NEAR(window().frame.size.height, size.height, 1);
}

TEST_F(MacWindowsTest, AClickIsForTheContentThatTheButtonBelongsTo) {
    std::vector<std::string> clicks;
    const auto ledge = windows->makeLedgePanel();
    const auto show = [&](const std::string& content) {
        Button item;
        item.title = {{content, {}, {}}};
        item.tag = 7;
        ledge->show({item}, {{100, 100}, {80, 28}},
                    [&clicks, content](int tag) { clicks.push_back(content + " " + std::to_string(tag)); });
    };
    show("First");
    NSButton* pressed = button(7);
    id target = pressed.target;
    [pressed sendAction:pressed.action to:target];
    show("Second");
    // A press that began before and ends now.
    [pressed sendAction:pressed.action to:target];
    turnRunLoop();
    EXPECT_EQ(clicks, (std::vector<std::string>{"First 7", "First 7"}));
    NSButton* shown = button(7);
    [shown sendAction:shown.action to:shown.target];
    turnRunLoop();
    EXPECT_EQ(clicks.back(), "Second 7");
}

TEST_F(MacWindowsTest, TheLedgeStandsWhereItWasToldToAndTakesNoFocus) {
    const auto ledge = windows->makeLedgePanel();
    const Rect frame{{100, 120}, {80, 28}};
    Button item;
    item.width = frame.size.width;
    item.height = frame.size.height;
    ledge->show({item}, frame, [](int) {});
    EXPECT_TRUE(fromNative(window().frame) == frame);
    EXPECT_FALSE(window().canBecomeKeyWindow);
}

TEST_F(MacWindowsTest, AFloatingPanelGoesSilently) {
    int closed = 0;
    auto panel = windows->makeFloatingPanel(
        "Card", [](int) {}, [&] { ++closed; });
    const View view = SamplePages::card(1, false);
    panel->show(view, {});
    [window() performClose:nil];
    panel.reset();
    turnRunLoop();
    EXPECT_EQ(closed, 0);
}

TEST_F(MacWindowsTest, AFloatingPanelKeepsItsTopLeftCornerAndItsButtonTheKeyboard) {
    const auto panel = windows->makeFloatingPanel(
        "Card", [](int) {}, [] {});
    const View small = SamplePages::card(1, false);
    const View large = SamplePages::card(1.3, true);
    panel->show(small, [](Size) { return Point{60, 160}; });
    [window() setFrameTopLeftPoint:toNative(Point{90, 170})];
    [window() makeFirstResponder:button(SamplePages::disclose)];
    for (const View& view : {large, small, large}) {
        panel->replace(view);
        turnRunLoop();
        EXPECT_TRUE((fromNative(window().frame).origin == Point{90, 170}));
        EXPECT_EQ(window().firstResponder, button(SamplePages::disclose));
    }
}

TEST_F(MacWindowsTest, OtherContentOfAFloatingPanelWaitsUntilTheMouseButtonIsReleased) {
    auto panel = windows->makeFloatingPanel(
        "Card", [](int) {}, [] {});
    const View small = SamplePages::card(1, false);
    const View large = SamplePages::card(1.3, true);
    panel->show(small, {});
    NSButton* held = button(SamplePages::disclose);
    panel->replace(large);
    // As AppKit runs it while it tracks the mouse.
    [NSRunLoop.mainRunLoop runMode:NSEventTrackingRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
    EXPECT_EQ(button(SamplePages::disclose), held);
    turnRunLoop();
    EXPECT_NE(button(SamplePages::disclose), held);
    panel->replace(small);
    panel.reset();
    turnRunLoop();
    EXPECT_EQ(window(), nil);
}

TEST_F(MacWindowsTest, ATriangleIsTurnedByItsDescriptionAndNotByTheClick) {
    int clicked = 0;
    const auto panel = windows->makeFloatingPanel(
        "Card", [&](int tag) { clicked = tag; }, [] {});
    const View view = SamplePages::card(1, false);
    panel->show(view, {});
    [button(SamplePages::disclose) performClick:nil];
    EXPECT_EQ(button(SamplePages::disclose).state, NSControlStateValueOff);
    turnRunLoop();
    EXPECT_EQ(clicked, SamplePages::disclose);
}

}  // namespace
}  // namespace ovin
