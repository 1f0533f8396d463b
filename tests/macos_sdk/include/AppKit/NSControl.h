#pragma once

#import <AppKit/NSCell.h>
#import <AppKit/NSFont.h>
#import <AppKit/NSParagraphStyle.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSControl : NSView
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property NSInteger tag;
@property(getter=isEnabled) BOOL enabled;
@property NSControlSize controlSize API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSFont* font;
@property NSLineBreakMode lineBreakMode API_AVAILABLE(macos(10.10));
@property NSTextAlignment alignment;
@property(copy) NSString* stringValue;
@property(copy) NSAttributedString* attributedStringValue;
- (NSSize)sizeThatFits:(NSSize)size API_AVAILABLE(macos(10.10));
- (void)sizeToFit;
- (NSInteger)sendActionOn:(NSEventMask)mask;
- (BOOL)sendAction:(nullable SEL)action to:(nullable id)target;
- (void)performClick:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
