#pragma once

#import <AppKit/NSAccessibilityProtocols.h>
#import <AppKit/NSAppearance.h>
#import <AppKit/NSLayoutAnchor.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSUserInterfaceItemIdentification.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class CALayer, NSCursor, NSWindow;

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
    NSViewNotSizable = 0,
    NSViewMinXMargin = 1,
    NSViewWidthSizable = 2,
    NSViewMaxXMargin = 4,
    NSViewMinYMargin = 8,
    NSViewHeightSizable = 16,
    NSViewMaxYMargin = 32
};

@interface NSView : NSResponder <NSUserInterfaceItemIdentification, NSAppearanceCustomization, NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, readonly, unsafe_unretained) NSWindow* window;
@property(nullable, readonly, unsafe_unretained) NSView* superview;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property(getter=isHidden) BOOL hidden;
@property CGFloat alphaValue;
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
- (void)viewDidMoveToWindow;
@property NSRect frame;
@property NSRect bounds;
- (void)setFrameSize:(NSSize)newSize;
- (void)setFrameOrigin:(NSPoint)newOrigin;
@property(readonly, getter=isFlipped) BOOL flipped;
@property(readonly, getter=isOpaque) BOOL opaque;
- (NSPoint)convertPoint:(NSPoint)point toView:(nullable NSView*)view;
- (NSPoint)convertPoint:(NSPoint)point fromView:(nullable NSView*)view;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView*)view;
- (NSRect)convertRect:(NSRect)rect fromView:(nullable NSView*)view;
- (nullable __kindof NSView*)hitTest:(NSPoint)point;
@property BOOL needsDisplay;
@property BOOL needsLayout API_AVAILABLE(macos(10.7));
- (void)layout API_AVAILABLE(macos(10.7));
- (void)drawRect:(NSRect)dirtyRect;
- (void)updateLayer API_AVAILABLE(macos(10.8));
@property(readonly) BOOL wantsUpdateLayer API_AVAILABLE(macos(10.8));
- (void)scrollPoint:(NSPoint)point;
- (BOOL)scrollRectToVisible:(NSRect)rect;
@property(readonly) NSRect visibleRect;
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event;
@property NSAutoresizingMaskOptions autoresizingMask;
@property BOOL wantsLayer;
@property(nullable, strong) CALayer* layer;
@property BOOL clipsToBounds API_AVAILABLE(macos(10.9));
@property(nullable, copy) NSString* toolTip;
- (void)viewDidChangeEffectiveAppearance API_AVAILABLE(macos(10.14));
@end

@interface NSView (NSCursorRect)
- (void)resetCursorRects;
- (void)addCursorRect:(NSRect)rect cursor:(NSCursor*)object;
- (void)discardCursorRects;
@end

@interface NSView (NSConstraintBasedLayoutInstallingConstraints)
@property(readonly, strong) NSLayoutXAxisAnchor* leadingAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutXAxisAnchor* trailingAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutYAxisAnchor* topAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutYAxisAnchor* bottomAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutDimension* widthAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutDimension* heightAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutXAxisAnchor* centerXAnchor API_AVAILABLE(macos(10.11));
@property(readonly, strong) NSLayoutYAxisAnchor* centerYAnchor API_AVAILABLE(macos(10.11));
@end

@interface NSView (NSConstraintBasedLayoutCoreMethods)
- (void)layoutSubtreeIfNeeded API_AVAILABLE(macos(10.7));
@property BOOL translatesAutoresizingMaskIntoConstraints API_AVAILABLE(macos(10.7));
@end

@interface NSView (NSConstraintBasedLayoutLayering)
@property(readonly) NSSize intrinsicContentSize API_AVAILABLE(macos(10.7));
- (void)invalidateIntrinsicContentSize API_AVAILABLE(macos(10.7));
- (NSLayoutPriority)contentHuggingPriorityForOrientation:(NSLayoutConstraintOrientation)orientation
    API_AVAILABLE(macos(10.7));
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation API_AVAILABLE(macos(10.7));
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation API_AVAILABLE(macos(10.7));
@end

@interface NSView (NSConstraintBasedLayoutFittingSize)
@property(readonly, copy) NSArray<NSLayoutConstraint*>* constraints API_AVAILABLE(macos(10.7));
@property(readonly) NSSize fittingSize API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
