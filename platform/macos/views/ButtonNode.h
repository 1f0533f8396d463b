// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

/// A button of the ledge. It accepts the first click, because no click ever gives its panel the keyboard.
@interface OvinButtonNode : NSButton

+ (instancetype)nodeWithButton:(const ovin::Button&)button target:(nullable OvinClickTarget*)target;

@end

NS_ASSUME_NONNULL_END
