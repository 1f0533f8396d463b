#include "platform/macos/session/MacApplication.h"

#import <AppKit/AppKit.h>

#include <optional>
#include <utility>

#include "platform/macos/session/ApplicationDelegate.h"
#include "platform/macos/system/TerminationSignals.h"

namespace ovin {

struct MacApplication::Native {
    NSApplication* const application = NSApplication.sharedApplication;
    OvinApplicationDelegate* const delegate = [[OvinApplicationDelegate alloc] init];
    std::optional<TerminationSignals> signals;
};

MacApplication::MacApplication(MainQueue& mainQueue) : mainQueue_(mainQueue), native_(std::make_unique<Native>()) {
    native_->application.delegate = native_->delegate;
    // The bundle says this too, but the program may run without one.
    [native_->application setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

MacApplication::~MacApplication() { native_->application.delegate = nil; }

/// Newer systems may refuse the cooperative method while another application is active, as is always the case here.
void MacApplication::activate() { [native_->application activateIgnoringOtherApps:YES]; }

void MacApplication::terminate() { [native_->application terminate:nil]; }

void MacApplication::beep() { NSBeep(); }

void MacApplication::run(ApplicationEvents events) {
    [native_->delegate setEvents:std::move(events)];
    native_->signals.emplace(mainQueue_, [this] { terminate(); });
    [native_->application run];
}

}  // namespace ovin
