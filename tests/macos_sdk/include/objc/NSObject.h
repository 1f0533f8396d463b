// The root class, and the protocol that every object realises.
#pragma once

#include <Availability.h>
#include <objc/NSObjCRuntime.h>
#include <objc/objc.h>

#pragma clang assume_nonnull begin

@class NSString;

@protocol NSObject
- (BOOL)isEqual:(id)object;
@property(readonly) NSUInteger hash;
@property(readonly) Class superclass;
- (Class)class;
- (instancetype)self;
- (id)performSelector:(SEL)aSelector;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)isMemberOfClass:(Class)aClass;
- (BOOL)conformsToProtocol:(Protocol*)aProtocol;
- (BOOL)respondsToSelector:(SEL)aSelector;
@property(readonly, copy) NSString* description;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (void)initialize;
- (instancetype)init;
+ (instancetype)new;
+ (instancetype)alloc;
- (void)dealloc;
- (id)copy;
- (id)mutableCopy;
+ (Class)class;
+ (Class)superclass;
+ (BOOL)instancesRespondToSelector:(SEL)aSelector;
+ (NSString*)description;
@end

#pragma clang assume_nonnull end
