#include "platform/macos/displays/MacEventMonitor.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <memory>

#include "tests/contract/MacUser.h"

namespace ovin {
namespace {

class MacEventMonitorTest : public testing::Test {
protected:
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }

    static void turnRunLoop() { [NSRunLoop.mainRunLoop runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.05]]; }

    const std::unique_ptr<EventMonitor> events = makeMacEventMonitor();
};

TEST_F(MacEventMonitorTest, TheSystemAllowsItAndWhatTheHandlerHoldsGoesWithTheToken) {
    const auto held = std::make_shared<int>(1);
    @autoreleasepool {
        auto token = events->monitorMouseDowns([held] {});
        ASSERT_NE(token, nullptr);
        EXPECT_GT(held.use_count(), 1);
        token.reset();
        turnRunLoop();
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MacEventMonitorTest, APressInThisProgramIsNotTold) {
    int presses = 0;
    const auto token = events->monitorMouseDowns([&] { ++presses; });
    for (const NSEventType type : {NSEventTypeLeftMouseDown, NSEventTypeRightMouseDown}) {
        NSEvent* press = MacUser::takeEvent(type);
        press != nil ? [NSApp sendEvent:press] : void(ADD_FAILURE() << "there is no such event");
    }
    turnRunLoop();
    EXPECT_EQ(presses, 0);
}

}  // namespace
}  // namespace ovin
