// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/session/MacApplication.h"

NS_ASSUME_NONNULL_BEGIN

/// Passes on the events of the application object, which does not keep its delegate alive.
@interface OvinApplicationDelegate : NSObject <NSApplicationDelegate>
- (void)setEvents:(ovin::ApplicationEvents)events;
@end

NS_ASSUME_NONNULL_END
