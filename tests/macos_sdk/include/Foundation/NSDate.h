#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

typedef double NSTimeInterval;

@interface NSDate : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)date;
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)secs;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)secs;
@property(readonly) NSTimeInterval timeIntervalSinceNow;
@property(readonly) NSTimeInterval timeIntervalSince1970;
@property(class, readonly, copy) NSDate* distantFuture;
@property(class, readonly, copy) NSDate* distantPast;
@end

NS_ASSUME_NONNULL_END
