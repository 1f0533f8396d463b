#pragma once

#import <AppKit/NSCell.h>
#import <AppKit/NSEvent.h>
#import <AppKit/NSUserInterfaceItemIdentification.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSImage, NSMenu;

@interface NSMenuItem : NSObject <NSCopying, NSCoding, NSUserInterfaceItemIdentification>
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(nullable, strong) NSMenu* submenu;
@property(copy) NSString* title;
@property(nullable, copy) NSAttributedString* attributedTitle;
@property(readonly, getter=isSeparatorItem) BOOL separatorItem;
@property(copy) NSString* keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(nullable, strong) NSImage* image;
@property NSControlStateValue state;
@property(getter=isEnabled) BOOL enabled;
@property(getter=isHidden) BOOL hidden;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property NSInteger tag;
@property(nullable, strong) id representedObject;
@property(nullable, copy) NSString* toolTip;
@end

NS_ASSUME_NONNULL_END
