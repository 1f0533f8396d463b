#pragma once

#include <Foundation/NSNotification.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSDistributedNotificationCenter : NSNotificationCenter
@property(class, readonly, strong) NSDistributedNotificationCenter* defaultCenter;
- (void)postNotificationName:(NSNotificationName)name
                      object:(nullable NSString*)object
                    userInfo:(nullable NSDictionary*)userInfo
          deliverImmediately:(BOOL)deliverImmediately;
@end

NS_ASSUME_NONNULL_END
