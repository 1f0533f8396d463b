#pragma once

#import <AppKit/AppKitDefines.h>
#import <AppKit/NSAppearance.h>
#import <AppKit/NSEvent.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSRunningApplication.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSApplication, NSImage, NSMenu, NSWindow;

APPKIT_EXTERN NSRunLoopMode const NSModalPanelRunLoopMode;
APPKIT_EXTERN NSRunLoopMode const NSEventTrackingRunLoopMode;
APPKIT_EXTERN NSNotificationName const NSApplicationDidChangeScreenParametersNotification;

typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseOK = 1;
static const NSModalResponse NSModalResponseCancel = 0;

@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app API_AVAILABLE(macos(12.0));
- (void)applicationWillFinishLaunching:(NSNotification*)notification;
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationDidBecomeActive:(NSNotification*)notification;
- (void)applicationDidResignActive:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
- (void)applicationDidChangeScreenParameters:(NSNotification*)notification;
@end

@interface NSApplication : NSResponder <NSAppearanceCustomization>
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, readonly, strong) NSEvent* currentEvent;
@property(nullable, readonly, weak) NSWindow* keyWindow;
@property(nullable, readonly, strong) NSWindow* modalWindow;
@property(readonly, copy) NSArray<NSWindow*>* windows;
@property(nullable, strong) NSMenu* mainMenu;
@property(readonly, getter=isActive) BOOL active;
@property(null_resettable, strong) NSImage* applicationIconImage;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy API_AVAILABLE(macos(10.6));
- (NSApplicationActivationPolicy)activationPolicy API_AVAILABLE(macos(10.6));
- (void)finishLaunching;
- (nullable NSEvent*)nextEventMatchingMask:(NSEventMask)mask
                                 untilDate:(nullable NSDate*)expiration
                                    inMode:(NSRunLoopMode)mode
                                   dequeue:(BOOL)deqFlag;
- (void)sendEvent:(NSEvent*)event;
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart;
- (void)abortModal;
- (void)run;
- (void)stop:(nullable id)sender;
- (void)terminate:(nullable id)sender;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (void)activate API_AVAILABLE(macos(14.0));
- (BOOL)sendAction:(SEL)action to:(nullable id)target from:(nullable id)sender;
@end

APPKIT_EXTERN __kindof NSApplication* _Null_unspecified NSApp;

NS_ASSUME_NONNULL_END
