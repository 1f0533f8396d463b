#pragma once

#include <Availability.h>
#include <objc/NSObjCRuntime.h>
#include <objc/objc.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_REQUIRES_SUPER __attribute__((objc_requires_super))
#define NS_RETURNS_RETAINED __attribute__((ns_returns_retained))
#define NS_RETURNS_NOT_RETAINED __attribute__((ns_returns_not_retained))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_NOESCAPE __attribute__((noescape))
#define NS_FORMAT_FUNCTION(text, first) __attribute__((format(__NSString__, text, first)))
#define NS_REQUIRES_NIL_TERMINATION __attribute__((sentinel))
#define FOUNDATION_EXPORT extern "C"

NS_ASSUME_NONNULL_BEGIN

@class NSString;

typedef NS_CLOSED_ENUM(NSInteger, NSComparisonResult) {
    NSOrderedAscending = -1,
    NSOrderedSame = 0,
    NSOrderedDescending = 1
};
static const NSInteger NSNotFound = NSIntegerMax;

FOUNDATION_EXPORT void NSLog(NSString* format, ...) NS_FORMAT_FUNCTION(1, 2);
FOUNDATION_EXPORT NSString* NSStringFromSelector(SEL aSelector);
FOUNDATION_EXPORT NSString* NSStringFromClass(Class aClass);

NS_ASSUME_NONNULL_END
