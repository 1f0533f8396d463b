// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

/// A large button with rounded ends. AppKit presses it by its key wherever the focus is in its window, and paints the button
/// of the Return key as the default button.
@interface OvinPushButtonNode : NSButton

+ (instancetype)nodeWithButton:(const ovin::PushButton&)button target:(nullable OvinClickTarget*)target;

@end

NS_ASSUME_NONNULL_END
