// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/views/ViewNode.h"

NS_ASSUME_NONNULL_BEGIN

/// The material of menus behind a view that fills it, which `view` shows. It looks active always, since its program never
/// is.
@interface OvinMenuBackgroundNode : NSVisualEffectView <OvinViewNode>

+ (instancetype)nodeWithBackground:(const ovin::MenuBackground&)background view:(ovin::NativeView*)view;

@end

NS_ASSUME_NONNULL_END
