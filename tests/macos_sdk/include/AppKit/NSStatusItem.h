#pragma once

#import <AppKit/NSMenu.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSStatusBarButton;

typedef NSString* NSStatusItemAutosaveName;

typedef NS_OPTIONS(NSUInteger, NSStatusItemBehavior) {
    NSStatusItemBehaviorRemovalAllowed = 1 << 1,
    NSStatusItemBehaviorTerminationOnRemoval = 1 << 2
};

@interface NSStatusItem : NSObject
@property CGFloat length;
@property(nullable, strong) NSMenu* menu;
@property(nullable, readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
@property NSStatusItemBehavior behavior API_AVAILABLE(macos(10.12));
@property(getter=isVisible) BOOL visible API_AVAILABLE(macos(10.12));
@property(null_resettable, copy) NSStatusItemAutosaveName autosaveName API_AVAILABLE(macos(10.12));
@end

NS_ASSUME_NONNULL_END
