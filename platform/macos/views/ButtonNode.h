// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

/// A button of the ledge. It takes the first click, since its panel never gets the keyboard that a click would ask for.
@interface OvinButtonNode : NSButton

+ (instancetype)nodeWithButton:(const ovin::Button&)button target:(nullable OvinClickTarget*)target;

@end

NS_ASSUME_NONNULL_END
