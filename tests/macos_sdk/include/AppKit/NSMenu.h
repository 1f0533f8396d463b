#pragma once

#import <AppKit/NSCell.h>
#import <AppKit/NSEvent.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSMenu, NSMenuItem, NSView;

APPKIT_EXTERN NSNotificationName const NSMenuDidBeginTrackingNotification API_AVAILABLE(macos(10.5));

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuNeedsUpdate:(NSMenu*)menu;
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@protocol NSMenuItemValidation <NSObject>
- (BOOL)validateMenuItem:(NSMenuItem*)menuItem;
@end

@interface NSMenu : NSObject <NSCopying>
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(copy) NSString* title;
- (void)addItem:(NSMenuItem*)newItem;
- (NSMenuItem*)addItemWithTitle:(NSString*)string action:(nullable SEL)selector keyEquivalent:(NSString*)charCode;
- (void)insertItem:(NSMenuItem*)newItem atIndex:(NSInteger)index;
- (void)removeAllItems;
- (void)update;
- (void)cancelTracking;
- (void)performActionForItemAtIndex:(NSInteger)index;
@property(copy) NSArray<NSMenuItem*>* itemArray API_AVAILABLE(macos(10.6));
@property(readonly) NSInteger numberOfItems;
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
- (NSInteger)indexOfItemWithTitle:(NSString*)title;
@property BOOL autoenablesItems;
@property(nullable, weak) id<NSMenuDelegate> delegate;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(nullable NSView*)view API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
