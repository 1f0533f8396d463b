// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/session/MacApplication.h"

NS_ASSUME_NONNULL_BEGIN

/// Hands on what the application object tells. The application does not keep its delegate.
@interface OvinApplicationDelegate : NSObject <NSApplicationDelegate>
- (void)setEvents:(ovin::ApplicationEvents)events;
@end

NS_ASSUME_NONNULL_END
