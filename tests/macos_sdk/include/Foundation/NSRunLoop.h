#pragma once

#include <Foundation/NSDate.h>
#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@class NSArray<ObjectType>, NSTimer;

typedef NSString* NSRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSDefaultRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSRunLoopCommonModes;

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* currentRunLoop;
@property(class, readonly, strong) NSRunLoop* mainRunLoop;
@property(nullable, readonly, copy) NSRunLoopMode currentMode;
- (void)runUntilDate:(NSDate*)limitDate;
- (BOOL)runMode:(NSRunLoopMode)mode beforeDate:(NSDate*)limitDate;
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
- (void)performBlock:(void (^)(void))block API_AVAILABLE(macos(10.12));
- (void)performInModes:(NSArray<NSRunLoopMode>*)modes block:(void (^)(void))block API_AVAILABLE(macos(10.12));
@end

NS_ASSUME_NONNULL_END
