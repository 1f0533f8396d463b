#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSClipView : NSView
@property BOOL drawsBackground;
- (void)scrollToPoint:(NSPoint)newOrigin;
@end

NS_ASSUME_NONNULL_END
