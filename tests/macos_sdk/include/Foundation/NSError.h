#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@class NSDictionary<KeyType, ObjectType>;

typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;

FOUNDATION_EXPORT NSErrorUserInfoKey const NSLocalizedDescriptionKey;

@interface NSError : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id>*)dict;
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSDictionary<NSErrorUserInfoKey, id>* userInfo;
@property(readonly, copy) NSString* localizedDescription;
@end

NS_ASSUME_NONNULL_END
