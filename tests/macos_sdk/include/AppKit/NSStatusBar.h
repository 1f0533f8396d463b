#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSStatusItem;

static const CGFloat NSVariableStatusItemLength = -1.0;
static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@property(readonly) CGFloat thickness;
@end

NS_ASSUME_NONNULL_END
