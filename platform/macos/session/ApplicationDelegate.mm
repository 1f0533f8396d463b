#include "platform/macos/session/ApplicationDelegate.h"

#include <utility>

#include "platform/macos/system/CallBack.h"

@implementation OvinApplicationDelegate {
    ovin::ApplicationEvents _events;
}

- (void)setEvents:(ovin::ApplicationEvents)events {
    _events = std::move(events);
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    if (_events.didFinishLaunching) ovin::callBack(_events.didFinishLaunching);
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    (void)notification;
    if (const auto tell = std::exchange(_events.willTerminate, nullptr)) ovin::callBack(tell);
}

/// No, because there are no documents and no window that the system should open.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
    (void)sender;
    (void)flag;
    if (_events.openAgain) ovin::callBack(_events.openAgain);
    return NO;
}

/// Nothing is restored at all, but without this the system logs a warning.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
    (void)app;
    return YES;
}

@end
