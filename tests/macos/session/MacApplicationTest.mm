#include "platform/macos/session/MacApplication.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>

#include "platform/macos/session/ApplicationDelegate.h"
#include "platform/macos/system/MacMainQueue.h"

namespace ovin {
namespace {

class MacApplicationTest : public testing::Test {
protected:
    const std::unique_ptr<MainQueue> queue = makeMacMainQueue();
};

TEST_F(MacApplicationTest, ItIsAnAccessoryWithADelegateForAsLongAsItExists) {
    const auto delegate = [] { return static_cast<NSObject*>(NSApplication.sharedApplication.delegate); };
    {
        const MacApplication application(*queue);
        EXPECT_EQ(NSApplication.sharedApplication.activationPolicy, NSApplicationActivationPolicyAccessory);
        EXPECT_TRUE([delegate() isKindOfClass:OvinApplicationDelegate.class]);
    }
    EXPECT_EQ(delegate(), nil);
}

#pragma clang diagnostic ignored "-Wused-but-marked-unused"  // GoogleTest's own, in each test of how a program ends.

/// Runs the program, tells on standard error what it is told, and lets `end` end it.
[[noreturn]] void runUntil(const std::function<void(MacApplication&)>& end) {
    const auto queue = makeMacMainQueue();
    MacApplication application(*queue);
    application.run({[&] {
                         std::fputs("launched, ", stderr);
                         end(application);
                     },
                     [] { std::fputs("terminates", stderr); }, [] {}});
    std::_Exit(2);  // The process ends within `run`.
}

/// In programs of their own, which ctest's process starts with the name of this test.
TEST_F(MacApplicationTest, WhateverEndsTheProgramItsDelegateIsToldBefore) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto terminates = testing::ExitedWithCode(0);
    EXPECT_EXIT(runUntil([](MacApplication& application) { application.terminate(); }), terminates, "launched, terminates");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EXIT(runUntil([signal](MacApplication&) { std::raise(signal); }), terminates, "launched, terminates");
    }
}

class ApplicationDelegateTest : public testing::Test {
protected:
    ApplicationDelegateTest() {
        [delegate setEvents:{[this] { ++launches; }, [this] { ++terminations; }, [this] { ++reopenings; }}];
    }

    OvinApplicationDelegate* const delegate = [[OvinApplicationDelegate alloc] init];
    int launches = 0;
    int terminations = 0;
    int reopenings = 0;
};

TEST_F(ApplicationDelegateTest, ANewStartOpensNoWindowButIsPassedOn) {
    for (const BOOL hasWindows : {YES, NO}) {
        EXPECT_FALSE([delegate applicationShouldHandleReopen:NSApplication.sharedApplication hasVisibleWindows:hasWindows]);
    }
    EXPECT_EQ(reopenings, 2);
    EXPECT_EQ(launches + terminations, 0);
}

TEST_F(ApplicationDelegateTest, TheEndIsToldOnce) {
    NSNotification* notification = [NSNotification notificationWithName:@"Any" object:nil];
    [delegate applicationDidFinishLaunching:notification];
    EXPECT_EQ(launches, 1);
    EXPECT_EQ(terminations, 0);
    [delegate applicationWillTerminate:notification];
    [delegate applicationWillTerminate:notification];
    EXPECT_EQ(terminations, 1);
}

TEST_F(ApplicationDelegateTest, TheProgramOutlivesItsLastWindow) {
    EXPECT_FALSE([delegate respondsToSelector:@selector(applicationShouldTerminateAfterLastWindowClosed:)]);
}

}  // namespace
}  // namespace ovin
