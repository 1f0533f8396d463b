#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@class NSData, NSError;

typedef NS_OPTIONS(NSUInteger, NSJSONWritingOptions) { NSJSONWritingSortedKeys API_AVAILABLE(macos(10.13)) = 2 };

API_AVAILABLE(macos(10.7))
@interface NSJSONSerialization : NSObject
+ (nullable NSData*)dataWithJSONObject:(id)obj options:(NSJSONWritingOptions)opt error:(NSError* _Nullable* _Nullable)error;
@end

NS_ASSUME_NONNULL_END
