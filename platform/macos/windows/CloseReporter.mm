#include "platform/macos/windows/CloseReporter.h"

#include <utility>

#include "platform/macos/system/RunSoon.h"

@implementation OvinCloseReporter {
    std::weak_ptr<const std::function<void()>> _handler;
}

- (instancetype)initWithHandler:(std::weak_ptr<const std::function<void()>>)handler {
    self = [super init];
    if (self != nil) _handler = std::move(handler);
    return self;
}

- (void)windowWillClose:(NSNotification*)notification {
    (void)notification;
    // Later, because the handler may destroy the window.
    ovin::runSoon([handler = _handler] {
        if (const auto alive = handler.lock()) (*alive)();
    });
}

@end
