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
    // The bundle says so as well; a program that runs without one has only this.
    [native_->application setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

MacApplication::~MacApplication() { native_->application.delegate = nil; }

/// The cooperative form that newer systems have may be refused while another application is active, which it always is.
void MacApplication::activate() { [native_->application activateIgnoringOtherApps:YES]; }

void MacApplication::terminate() { [native_->application terminate:nil]; }

void MacApplication::beep() { NSBeep(); }

void MacApplication::run(ApplicationEvents events) {
    [native_->delegate setEvents:std::move(events)];
    native_->signals.emplace(mainQueue_, [this] { terminate(); });
    [native_->application run];
}

}  // namespace ovin
