#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef struct CF_BRIDGED_TYPE(id) CGColor* CGColorRef;

CF_EXPORT bool CGColorEqualToColor(CGColorRef _Nullable color1, CGColorRef _Nullable color2);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
