#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSLocale : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, copy) NSLocale* currentLocale;
@property(readonly, copy) NSString* localeIdentifier;
@end

NS_ASSUME_NONNULL_END
