#pragma once

#import <AppKit/NSAppearance.h>
#import <AppKit/NSApplication.h>
#import <AppKit/NSGraphics.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSUserInterfaceItemIdentification.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSButton, NSColor, NSScreen, NSView, NSWindow;

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskResizable = 1 << 3,
    NSWindowStyleMaskUtilityWindow = 1 << 4,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
    NSWindowStyleMaskFullSizeContentView API_AVAILABLE(macos(10.10)) = 1 << 15
};
typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
    NSWindowCollectionBehaviorDefault = 0,
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorMoveToActiveSpace = 1 << 1,
    NSWindowCollectionBehaviorTransient = 1 << 3,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8
};
typedef NS_ENUM(NSInteger, NSWindowAnimationBehavior) {
    NSWindowAnimationBehaviorDefault = 0,
    NSWindowAnimationBehaviorNone = 2,
    NSWindowAnimationBehaviorUtilityWindow = 4
};
typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) { NSWindowTitleVisible = 0, NSWindowTitleHidden = 1 };
typedef NS_ENUM(NSUInteger, NSWindowButton) {
    NSWindowCloseButton = 0,
    NSWindowMiniaturizeButton = 1,
    NSWindowZoomButton = 2
};

typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSNormalWindowLevel = 0;
static const NSWindowLevel NSFloatingWindowLevel = 3;
static const NSWindowLevel NSModalPanelWindowLevel = 8;
static const NSWindowLevel NSMainMenuWindowLevel = 24;
static const NSWindowLevel NSStatusWindowLevel = 25;
static const NSWindowLevel NSPopUpMenuWindowLevel = 101;

@protocol NSWindowDelegate <NSObject>
@optional
- (BOOL)windowShouldClose:(NSWindow*)sender;
- (void)windowWillClose:(NSNotification*)notification;
- (void)windowDidMove:(NSNotification*)notification;
- (void)windowDidResize:(NSNotification*)notification;
- (void)windowDidBecomeKey:(NSNotification*)notification;
- (void)windowDidResignKey:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder <NSAppearanceCustomization, NSUserInterfaceItemIdentification>
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
@property(copy) NSString* title;
@property NSWindowTitleVisibility titleVisibility API_AVAILABLE(macos(10.10));
@property BOOL titlebarAppearsTransparent API_AVAILABLE(macos(10.10));
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property NSWindowStyleMask styleMask;
@property(nullable, strong) __kindof NSView* contentView;
@property(readonly) NSRect frame;
- (NSRect)frameRectForContentRect:(NSRect)contentRect;
- (NSRect)contentRectForFrameRect:(NSRect)frameRect;
- (NSRect)convertRectToScreen:(NSRect)rect API_AVAILABLE(macos(10.7));
- (void)setContentSize:(NSSize)size;
- (void)setFrame:(NSRect)frameRect display:(BOOL)flag;
- (void)setFrameOrigin:(NSPoint)point;
- (void)setFrameTopLeftPoint:(NSPoint)point;
- (void)center;
- (void)layoutIfNeeded API_AVAILABLE(macos(10.7));
- (void)orderFront:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)close;
- (void)performClose:(nullable id)sender;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property BOOL hidesOnDeactivate;
@property BOOL preventsApplicationTerminationWhenModal API_AVAILABLE(macos(10.6));
@property BOOL canHide;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly, getter=isKeyWindow) BOOL keyWindow;
@property(readonly) BOOL canBecomeKeyWindow;
@property(readonly) BOOL canBecomeMainWindow;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
@property(nullable, readonly, weak) NSResponder* firstResponder;
@property(nullable, weak) NSView* initialFirstResponder;
@property BOOL autorecalculatesKeyViewLoop;
@property(nullable, readonly, strong) NSScreen* screen;
@property(readonly) CGFloat backingScaleFactor API_AVAILABLE(macos(10.7));
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property(getter=isOpaque) BOOL opaque;
@property(null_resettable, copy) NSColor* backgroundColor;
@property BOOL hasShadow;
- (void)invalidateShadow;
@property(getter=isMovable) BOOL movable API_AVAILABLE(macos(10.6));
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
- (nullable NSButton*)standardWindowButton:(NSWindowButton)b;
@property BOOL allowsToolTipsWhenApplicationIsInactive;
@property NSWindowAnimationBehavior animationBehavior API_AVAILABLE(macos(10.7));
@property(getter=isRestorable) BOOL restorable API_AVAILABLE(macos(10.7));
@property(readonly) NSInteger windowNumber;
@end

NS_ASSUME_NONNULL_END
