#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/macos/system/Strings.h"
#include "platform/macos/windows/MacWindows.h"
#include "tests/contract/MacUser.h"

namespace ovin {
namespace {

class MacWindowStylesTest : public testing::Test {
protected:
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }

    static NSWindow* window() { return MacUser::window(); }

    static void expectToBeOverPrograms(NSWindow* panel, NSWindowLevel level) {
        EXPECT_TRUE([panel isKindOfClass:NSPanel.class]);
        EXPECT_EQ(panel.level, level);
        EXPECT_EQ(panel.collectionBehavior,
                  NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary);
        EXPECT_FALSE(panel.hidesOnDeactivate);
        EXPECT_TRUE(panel.allowsToolTipsWhenApplicationIsInactive);
        EXPECT_TRUE((panel.styleMask & NSWindowStyleMaskNonactivatingPanel) != 0);
        expectToBelongToItsOwner(panel);
    }

    static void expectToBelongToItsOwner(NSWindow* window) {
        EXPECT_FALSE(window.releasedWhenClosed);
        EXPECT_FALSE(window.restorable);
    }

    static void expectAnEmptyTitleBar(NSWindow* window, const std::string& title) {
        EXPECT_EQ(toString(window.title), title);
        EXPECT_EQ(window.titleVisibility, NSWindowTitleHidden);
        EXPECT_TRUE(window.titlebarAppearsTransparent);
        const NSWindowStyleMask covered = NSWindowStyleMaskTitled | NSWindowStyleMaskFullSizeContentView;
        EXPECT_EQ(window.styleMask & covered, covered);
        EXPECT_EQ(window.styleMask & (NSWindowStyleMaskResizable | NSWindowStyleMaskMiniaturizable), 0U);
    }

    const std::unique_ptr<Windows> windows = makeMacWindows();
    const View content{Spacer{40}};
};

TEST_F(MacWindowStylesTest, TheLedgeIsABarePanelAtTheLevelOfTheStatusBar) {
    const auto ledge = windows->makeLedgePanel();
    ledge->show(content, {{100, 120}, {80, 28}}, [](int) {});
    expectToBeOverPrograms(window(), NSStatusWindowLevel);
    EXPECT_EQ(window().styleMask & NSWindowStyleMaskTitled, 0U);
    EXPECT_FALSE(window().opaque);
    EXPECT_EQ(window().backgroundColor.alphaComponent, 0);
    EXPECT_TRUE(window().hasShadow);
}

TEST_F(MacWindowStylesTest, ACardFloatsOverProgramsAndCanBeClosed) {
    const auto card = windows->makeFloatingPanel(
        "Card", [](int) {}, [] {});
    card->show(content, {});
    expectToBeOverPrograms(window(), NSFloatingWindowLevel);
    expectAnEmptyTitleBar(window(), "Card");
    NSButton* close = [window() standardWindowButton:NSWindowCloseButton];
    EXPECT_NE(close, nil);
    EXPECT_FALSE(close.hidden);
}

TEST_F(MacWindowStylesTest, APageIsAnOrdinaryWindowWithoutButtonsInItsTitleBar) {
    const auto page = windows->makeInformationWindow("Page", content, [](int) {});
    page->show();
    EXPECT_EQ(window().level, NSNormalWindowLevel);
    EXPECT_TRUE(window().canBecomeKeyWindow);
    expectAnEmptyTitleBar(window(), "Page");
    expectToBelongToItsOwner(window());
    for (const NSWindowButton kind : {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton}) {
        NSButton* button = [window() standardWindowButton:kind];
        EXPECT_TRUE(button == nil || button.hidden);
    }
}

}  // namespace
}  // namespace ovin
