#include "platform/macos/applications/ApplicationsObserver.h"

#include <utility>

#include "platform/macos/system/CallBack.h"

namespace {

NSString* const listKey = @"runningApplications";

/// Its address distinguishes this observation from others of the same object.
char observation;

}  // namespace

@implementation OvinApplicationsObserver {
    NSWorkspace* _workspace;
    std::weak_ptr<const std::function<void()>> _handler;
}

- (instancetype)initWithWorkspace:(NSWorkspace*)workspace handler:(std::weak_ptr<const std::function<void()>>)handler {
    self = [super init];
    if (self) {
        _workspace = workspace;
        _handler = std::move(handler);
        [workspace addObserver:self forKeyPath:listKey options:0 context:&observation];
    }
    return self;
}

- (void)stop {
    [_workspace removeObserver:self forKeyPath:listKey context:&observation];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context != &observation) {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
        return;
    }
    if (const auto running = _handler.lock()) ovin::callBack(*running);
}

@end
