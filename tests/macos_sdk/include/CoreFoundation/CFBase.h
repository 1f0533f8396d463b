// What all types of CoreFoundation share. What a function returns follows its name, Create and Copy handing out ownership,
// which the static analyzer knows too; where a result comes out through an argument it is said there.
#pragma once

#include <Availability.h>
#include <CoreFoundation/CFCGTypes.h>
#include <MacTypes.h>
#include <objc/NSObjCRuntime.h>
#include <stddef.h>
#include <stdint.h>

#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#define CF_CONSUMED __attribute__((cf_consumed))
#define CF_BRIDGED_TYPE(type) __attribute__((objc_bridge(type)))
#define CF_EXPORT extern "C"
#define CF_ENUM NS_ENUM
#define CF_OPTIONS NS_OPTIONS
#define CF_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define CF_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define CF_IMPLICIT_BRIDGING_ENABLED _Pragma("clang arc_cf_code_audited begin")
#define CF_IMPLICIT_BRIDGING_DISABLED _Pragma("clang arc_cf_code_audited end")

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

@class NSString;

typedef unsigned char Boolean;
typedef unsigned char UInt8;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef unsigned short UniChar;

typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef signed long CFIndex;

typedef const CF_BRIDGED_TYPE(id) void* CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator* CFAllocatorRef;

CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex loc, CFIndex len) { return CFRange{loc, len}; }

CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef cf);
CF_EXPORT CFTypeRef CFRetain(CFTypeRef cf);
CF_EXPORT void CFRelease(CFTypeRef cf);
CF_EXPORT CFIndex CFGetRetainCount(CFTypeRef cf);
CF_EXPORT Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2);
CF_EXPORT CFHashCode CFHash(CFTypeRef cf);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
