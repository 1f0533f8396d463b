// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// Shows a part of `view`, which is too large. Its scrollers lie over the view whatever the user prefers, because the layout
/// leaves no room for scrollers beside it.
@interface OvinScrollNode : NSScrollView

+ (instancetype)nodeWithScroll:(const ovin::ScrollView&)scroll view:(NSView*)view;

/// Whether it scrolls a page up and down.
@property(nonatomic, readonly) BOOL isUpright;

/// Shows the end of the page.
- (void)scrollToEnd;

@end

NS_ASSUME_NONNULL_END
