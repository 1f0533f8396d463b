#include "platform/macos/views/ClickTarget.h"

#include <utility>

#include "platform/macos/system/RunSoon.h"

@implementation OvinClickTarget {
    std::weak_ptr<const ovin::ClickHandler> _handler;
}

- (instancetype)initWithHandler:(std::weak_ptr<const ovin::ClickHandler>)handler {
    self = [super init];
    if (self != nil) _handler = std::move(handler);
    return self;
}

- (void)adopt:(NSButton*)button {
    button.target = self;
    button.action = @selector(clicked:);
}

- (void)clicked:(NSButton*)sender {
    // Later, because the handler may destroy the button while it still handles the click.
    ovin::runSoon([handler = _handler, tag = static_cast<int>(sender.tag)] {
        if (const auto alive = handler.lock()) (*alive)(tag);
    });
}

@end
