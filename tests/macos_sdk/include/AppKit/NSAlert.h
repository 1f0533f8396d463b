#pragma once

#import <AppKit/NSApplication.h>
#import <AppKit/NSButton.h>
#import <AppKit/NSWindow.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2
};

static const NSModalResponse NSAlertFirstButtonReturn = 1000;
static const NSModalResponse NSAlertSecondButtonReturn = 1001;
static const NSModalResponse NSAlertThirdButtonReturn = 1002;

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property(null_resettable, strong) NSImage* icon;
- (NSButton*)addButtonWithTitle:(NSString*)title;
@property(readonly, copy) NSArray<NSButton*>* buttons;
@property NSAlertStyle alertStyle;
- (NSModalResponse)runModal;
@property(readonly, strong) NSWindow* window;
@end

NS_ASSUME_NONNULL_END
