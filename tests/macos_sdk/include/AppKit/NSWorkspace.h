#pragma once

#import <AppKit/AppKitDefines.h>
#import <AppKit/NSRunningApplication.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSImage;

APPKIT_EXTERN NSNotificationName const NSWorkspaceDidLaunchApplicationNotification;
APPKIT_EXTERN NSNotificationName const NSWorkspaceDidTerminateApplicationNotification;
APPKIT_EXTERN NSString* const NSWorkspaceApplicationKey API_AVAILABLE(macos(10.6));

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
- (BOOL)openURL:(NSURL*)url;
- (NSImage*)iconForFile:(NSString*)fullPath;
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier API_AVAILABLE(macos(10.6));
@end

@interface NSWorkspace (NSWorkspaceRunningApplications)
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications API_AVAILABLE(macos(10.6));
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
