// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// Shows a part of a view that is too large, which `view` shows. Its scrollers lie over the view whatever the user prefers:
/// the lengths of what lies beside them leave no room for wider ones.
@interface OvinScrollNode : NSScrollView

+ (instancetype)nodeWithScroll:(const ovin::ScrollView&)scroll view:(NSView*)view;

/// Whether it scrolls a page up and down.
@property(nonatomic, readonly) BOOL isUpright;

/// Shows the end of the page.
- (void)scrollToEnd;

@end

NS_ASSUME_NONNULL_END
