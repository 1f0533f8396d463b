// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

/// Text that can be clicked. A link has the pointing hand over the whole text, and is a link to assistive programs, too.
@interface OvinTextButtonNode : NSButton

+ (instancetype)nodeWithButton:(const ovin::TextButton&)button target:(nullable OvinClickTarget*)target;

@end

NS_ASSUME_NONNULL_END
