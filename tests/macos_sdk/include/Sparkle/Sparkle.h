// The update framework, version 2. Not a part of the system: no typings hold it, only what is written here.
#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

@class SPUStandardUserDriver, SUAppcastItem, SPUUpdater;

typedef NS_ENUM(NSInteger, SPUUserUpdateStage) {
    SPUUserUpdateStageNotDownloaded = 0,
    SPUUserUpdateStageDownloaded = 1,
    SPUUserUpdateStageInstalling = 2
};

@interface SPUUserUpdateState : NSObject
@property(nonatomic, readonly) SPUUserUpdateStage stage;
@property(nonatomic, readonly) BOOL userInitiated;
@end

@protocol SPUUpdaterDelegate <NSObject>
@optional
- (nullable NSString*)feedURLStringForUpdater:(SPUUpdater*)updater;
- (BOOL)updaterShouldPromptForPermissionToCheckForUpdates:(SPUUpdater*)updater;
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@optional
@property(nonatomic, readonly) BOOL supportsGentleScheduledUpdateReminders;
- (BOOL)standardUserDriverShouldHandleShowingScheduledUpdate:(SUAppcastItem*)update andInImmediateFocus:(BOOL)immediateFocus;
- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state;
@end

@interface SPUUpdater : NSObject
@property(nonatomic, readonly) BOOL canCheckForUpdates;
@property(nonatomic, readonly) BOOL sessionInProgress;
@property(nonatomic) BOOL automaticallyChecksForUpdates;
@property(nonatomic) NSTimeInterval updateCheckInterval;
@property(nonatomic) BOOL automaticallyDownloadsUpdates;
@property(nonatomic, readonly, nullable) NSURL* feedURL;
@end

@interface SPUStandardUpdaterController : NSObject
@property(nonatomic, readonly) SPUUpdater* updater;
@property(nonatomic, readonly) SPUStandardUserDriver* userDriver;
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithUpdaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
- (void)startUpdater;
- (IBAction)checkForUpdates:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
