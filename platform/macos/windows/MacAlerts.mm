#include "platform/macos/windows/MacAlerts.h"

#import <AppKit/AppKit.h>

#include "platform/macos/system/CallBack.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

void runModal(NSString* message, NSString* informative) {
    NSAlert* alert = [[NSAlert alloc] init];
    alert.messageText = message;
    alert.informativeText = informative;
    // Otherwise neither a signal nor the end of the session would end the program while the alert is shown.
    alert.window.preventsApplicationTerminationWhenModal = NO;
    // Another application may have come to the front meanwhile, and would cover the alert.
    [NSApp activateIgnoringOtherApps:YES];
    [alert runModal];
}

class MacAlerts final : public Alerts {
public:
    void run(const Alert& alert) override {
        NSString* message = toNSString(alert.message);
        NSString* informative = toNSString(alert.informative);
        NSTimer* timer = [NSTimer timerWithTimeInterval:0
                                                repeats:NO
                                                  block:^(NSTimer*) {
                                                    callBack([&] { runModal(message, informative); });
                                                  }];
        // Not the common modes, because the alert waits until a menu or an earlier alert has closed.
        [NSRunLoop.mainRunLoop addTimer:timer forMode:NSDefaultRunLoopMode];
    }
};

}  // namespace

std::unique_ptr<Alerts> makeMacAlerts() { return std::make_unique<MacAlerts>(); }

}  // namespace ovin
