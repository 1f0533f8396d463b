#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

@class NSNumber;

typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean* CFBooleanRef;
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber* CFNumberRef;

CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;
CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);
CF_EXPORT CFTypeID CFNumberGetTypeID(void);
CF_EXPORT Boolean CFNumberIsFloatType(CFNumberRef number);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
