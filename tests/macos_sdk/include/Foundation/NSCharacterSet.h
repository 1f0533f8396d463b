#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCharacterSet : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(class, readonly, copy) NSCharacterSet* whitespaceCharacterSet;
@property(class, readonly, copy) NSCharacterSet* whitespaceAndNewlineCharacterSet;
@end

NS_ASSUME_NONNULL_END
