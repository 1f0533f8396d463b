#pragma once

#import <AppKit/NSButtonCell.h>
#import <AppKit/NSColor.h>
#import <AppKit/NSControl.h>
#import <AppKit/NSImage.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSButton : NSControl
+ (instancetype)buttonWithTitle:(NSString*)title
                         target:(nullable id)target
                         action:(nullable SEL)action API_AVAILABLE(macos(10.12));
+ (instancetype)buttonWithImage:(NSImage*)image
                         target:(nullable id)target
                         action:(nullable SEL)action API_AVAILABLE(macos(10.12));
- (void)setButtonType:(NSButtonType)type;
@property(copy) NSString* title;
@property(copy) NSAttributedString* attributedTitle;
@property NSBezelStyle bezelStyle;
@property(getter=isBordered) BOOL bordered;
@property BOOL showsBorderOnlyWhileMouseInside;
@property NSControlStateValue state;
@property(nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property NSImageScaling imageScaling;
@property(nullable, copy) NSColor* bezelColor API_AVAILABLE(macos(10.12.2));
@property(nullable, copy) NSColor* contentTintColor API_AVAILABLE(macos(10.14));
@property(copy) NSString* keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
- (void)highlight:(BOOL)flag;
@end

NS_ASSUME_NONNULL_END
