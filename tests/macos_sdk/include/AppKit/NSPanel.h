#pragma once

#import <AppKit/NSWindow.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSPanel : NSWindow
@property(getter=isFloatingPanel) BOOL floatingPanel;
@property BOOL becomesKeyOnlyIfNeeded;
@end

NS_ASSUME_NONNULL_END
