#pragma once

#include <Foundation/NSEnumerator.h>
#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSMutableCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
- (ObjectType)objectAtIndex:(NSUInteger)index;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                          count:(NSUInteger)cnt NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSArray <ObjectType>(NSExtendedArray)
- (BOOL)containsObject:(ObjectType)anObject;
- (NSUInteger)indexOfObject:(ObjectType)anObject;
- (NSUInteger)indexOfObjectIdenticalTo:(ObjectType)anObject;
@property(nullable, readonly) ObjectType firstObject API_AVAILABLE(macos(10.6));
@property(nullable, readonly) ObjectType lastObject;
- (BOOL)isEqualToArray:(NSArray<ObjectType>*)otherArray;
- (NSString*)componentsJoinedByString:(NSString*)separator;
- (NSArray<ObjectType>*)arrayByAddingObject:(ObjectType)anObject;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)idx API_AVAILABLE(macos(10.8));
@end

@interface NSArray <ObjectType>(NSArrayCreation)
+ (instancetype)array;
+ (instancetype)arrayWithObject:(ObjectType)anObject;
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nonnull])objects count:(NSUInteger)cnt;
+ (instancetype)arrayWithArray:(NSArray<ObjectType>*)array;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)anObject;
- (void)insertObject:(ObjectType)anObject atIndex:(NSUInteger)index;
- (void)removeLastObject;
- (void)removeObjectAtIndex:(NSUInteger)index;
- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(ObjectType)anObject;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCapacity:(NSUInteger)numItems NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSMutableArray <ObjectType>(NSExtendedMutableArray)
- (void)removeAllObjects;
- (void)removeObject:(ObjectType)anObject;
- (void)removeObjectIdenticalTo:(ObjectType)anObject;
- (void)addObjectsFromArray:(NSArray<ObjectType>*)otherArray;
- (void)setObject:(ObjectType)obj atIndexedSubscript:(NSUInteger)idx API_AVAILABLE(macos(10.8));
@end

@interface NSMutableArray <ObjectType>(NSMutableArrayCreation)
+ (instancetype)arrayWithCapacity:(NSUInteger)numItems;
@end

NS_ASSUME_NONNULL_END
