// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// The material of menus behind `view`, which shows the content and fills it. Always looks active, because Ovin never is.
@interface OvinMenuBackgroundNode : NSVisualEffectView

+ (instancetype)nodeWithBackground:(const ovin::MenuBackground&)background view:(NSView*)view;

@end

NS_ASSUME_NONNULL_END
