#pragma once

#include <Foundation/NSDate.h>
#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block API_AVAILABLE(macos(10.12));
+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval
                                   repeats:(BOOL)repeats
                                     block:(void (^)(NSTimer* timer))block API_AVAILABLE(macos(10.12));
@property(copy) NSDate* fireDate;
@property(readonly) NSTimeInterval timeInterval;
@property NSTimeInterval tolerance API_AVAILABLE(macos(10.9));
- (void)invalidate;
@property(readonly, getter=isValid) BOOL valid;
@end

NS_ASSUME_NONNULL_END
