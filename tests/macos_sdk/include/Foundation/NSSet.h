#pragma once

#include <Foundation/NSEnumerator.h>
#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@class NSArray<ObjectType>;

@interface NSSet<__covariant ObjectType> : NSObject <NSCopying, NSMutableCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
- (nullable ObjectType)member:(ObjectType)object;
@property(readonly, copy) NSArray<ObjectType>* allObjects;
- (BOOL)containsObject:(ObjectType)anObject;
+ (instancetype)set;
+ (instancetype)setWithArray:(NSArray<ObjectType>*)array;
@end

@interface NSMutableSet<ObjectType> : NSSet <ObjectType>
- (void)addObject:(ObjectType)object;
- (void)removeObject:(ObjectType)object;
@end

NS_ASSUME_NONNULL_END
