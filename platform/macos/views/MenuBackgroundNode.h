// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// The material of menus behind a view that fills it, which `view` shows. It looks active always, since its program never
/// is.
@interface OvinMenuBackgroundNode : NSVisualEffectView

+ (instancetype)nodeWithBackground:(const ovin::MenuBackground&)background view:(NSView*)view;

@end

NS_ASSUME_NONNULL_END
