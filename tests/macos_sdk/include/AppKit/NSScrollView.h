#pragma once

#import <AppKit/NSScroller.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@class NSClipView;

typedef NS_ENUM(NSUInteger, NSBorderType) { NSNoBorder = 0, NSLineBorder = 1, NSBezelBorder = 2, NSGrooveBorder = 3 };
typedef NS_ENUM(NSInteger, NSScrollElasticity) {
    NSScrollElasticityAutomatic = 0,
    NSScrollElasticityNone = 1,
    NSScrollElasticityAllowed = 2
};

@interface NSScrollView : NSView
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, strong) __kindof NSView* documentView;
@property(strong) NSClipView* contentView;
@property NSBorderType borderType;
@property BOOL automaticallyAdjustsContentInsets API_AVAILABLE(macos(10.10));
@property BOOL drawsBackground;
@property BOOL hasVerticalScroller;
@property BOOL hasHorizontalScroller;
@property BOOL autohidesScrollers;
@property NSScrollerStyle scrollerStyle API_AVAILABLE(macos(10.7));
@property NSScrollElasticity horizontalScrollElasticity API_AVAILABLE(macos(10.7));
@property NSScrollElasticity verticalScrollElasticity API_AVAILABLE(macos(10.7));
- (void)reflectScrolledClipView:(NSClipView*)cView;
@end

NS_ASSUME_NONNULL_END
