#pragma once

#import <AppKit/NSColor.h>
#import <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSTextField : NSControl
+ (instancetype)labelWithString:(NSString*)stringValue API_AVAILABLE(macos(10.12));
+ (instancetype)wrappingLabelWithString:(NSString*)stringValue API_AVAILABLE(macos(10.12));
+ (instancetype)labelWithAttributedString:(NSAttributedString*)attributedStringValue API_AVAILABLE(macos(10.12));
@property(nullable, copy) NSColor* backgroundColor;
@property BOOL drawsBackground;
@property(nullable, copy) NSColor* textColor;
@property(getter=isEditable) BOOL editable;
@property(getter=isSelectable) BOOL selectable;
@property BOOL allowsEditingTextAttributes;
@property CGFloat preferredMaxLayoutWidth API_AVAILABLE(macos(10.8));
@property NSInteger maximumNumberOfLines API_AVAILABLE(macos(10.11));
@end

NS_ASSUME_NONNULL_END
