#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
    SMAppServiceStatusNotRegistered = 0,
    SMAppServiceStatusEnabled = 1,
    SMAppServiceStatusRequiresApproval = 2,
    SMAppServiceStatusNotFound = 3
} API_AVAILABLE(macos(13.0));

API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
@property(class, readonly) SMAppService* mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
+ (void)openSystemSettingsLoginItems;
@end

NS_ASSUME_NONNULL_END
