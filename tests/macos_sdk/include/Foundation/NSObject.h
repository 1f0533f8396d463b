#pragma once

#include <CoreFoundation/CFBase.h>
#include <Foundation/NSObjCRuntime.h>
#include <objc/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@class NSCoder;

@protocol NSCopying
- (id)copyWithZone:(nullable struct _NSZone*)zone;
@end

@protocol NSMutableCopying
- (id)mutableCopyWithZone:(nullable struct _NSZone*)zone;
@end

@protocol NSCoding
- (void)encodeWithCoder:(NSCoder*)coder;
- (nullable instancetype)initWithCoder:(NSCoder*)coder;
@end

@protocol NSSecureCoding <NSCoding>
@property(class, readonly) BOOL supportsSecureCoding;
@end

// Under reference counting these hand ownership over and take it.
NS_RETURNS_RETAINED static inline id _Nullable CFBridgingRelease(CFTypeRef CF_CONSUMED _Nullable X) {
    return (__bridge_transfer id)X;
}
CF_RETURNS_RETAINED static inline CFTypeRef _Nullable CFBridgingRetain(id _Nullable X) {
    return (__bridge_retained CFTypeRef)X;
}

NS_ASSUME_NONNULL_END
