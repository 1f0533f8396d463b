#include "platform/macos/windows/MacAlerts.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/macos/system/Strings.h"
#include "tests/contract/MacUser.h"

namespace ovin {
namespace {

class MacAlertsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyAccessory];
        [NSApp finishLaunching];
    }

    /// Runs the loop in a mode until so many alerts were acknowledged, or for a while.
    void run(NSRunLoopMode mode, std::size_t count) {
        NSDate* end = [NSDate dateWithTimeIntervalSinceNow:count > 0 ? 20 : 0.2];
        while ((count == 0 || user.acknowledged().size() < count) && end.timeIntervalSinceNow > 0) {
            [NSRunLoop.mainRunLoop runMode:mode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.02]];
        }
    }

    const Alert first{"The display cannot be widened", "It has no wider mode."};
    const Alert second{"Grüße & <b>no mark-up</b>", "Another."};
    MacUser user;
    const std::unique_ptr<Alerts> alerts = makeMacAlerts();
};

TEST_F(MacAlertsTest, AlertsComeOneAfterTheOtherInTheirOrder) {
    alerts->run(first);
    alerts->run(second);
    EXPECT_EQ(NSApp.modalWindow, nil);
    EXPECT_TRUE(user.acknowledged().empty());
    run(NSDefaultRunLoopMode, 2);
    EXPECT_EQ(user.acknowledged(), (std::vector{first, second}));
    EXPECT_EQ(NSApp.modalWindow, nil);
}

TEST_F(MacAlertsTest, AnAlertWaitsUntilAMenuHasClosed) {
    alerts->run(first);
    // The loop does not run in a mode in which nothing is to come.
    NSTimer* other = [NSTimer timerWithTimeInterval:0.01
                                            repeats:YES
                                              block:^(NSTimer*){
                                              }];
    [NSRunLoop.mainRunLoop addTimer:other forMode:NSEventTrackingRunLoopMode];
    run(NSEventTrackingRunLoopMode, 0);
    [other invalidate];
    EXPECT_TRUE(user.acknowledged().empty());
    run(NSDefaultRunLoopMode, 1);
    EXPECT_EQ(user.acknowledged(), std::vector{first});
}

TEST_F(MacAlertsTest, TheProgramMayEndWhileAnAlertIsShown) {
    __block bool wasAsked = false;
    __block BOOL prevents = YES;
    // The user waits longer before acknowledging.
    NSTimer* look = [NSTimer timerWithTimeInterval:0
                                           repeats:NO
                                             block:^(NSTimer*) {
                                               wasAsked = NSApp.modalWindow != nil;
                                               prevents = NSApp.modalWindow.preventsApplicationTerminationWhenModal;
                                             }];
    alerts->run(first);
    [NSRunLoop.mainRunLoop addTimer:look forMode:NSModalPanelRunLoopMode];
    run(NSDefaultRunLoopMode, 1);
    EXPECT_TRUE(wasAsked);
    EXPECT_FALSE(prevents);
}

}  // namespace
}  // namespace ovin
