#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef const struct CF_BRIDGED_TYPE(id) __AXValue* AXValueRef;

typedef CF_ENUM(UInt32, AXValueType) {
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeCFRange = 4,
    kAXValueTypeAXError = 5,
    kAXValueTypeIllegal = 0
};

CF_EXPORT CFTypeID AXValueGetTypeID(void);
CF_EXPORT AXValueRef _Nullable AXValueCreate(AXValueType theType, const void* valuePtr);
CF_EXPORT AXValueType AXValueGetType(AXValueRef value);
CF_EXPORT Boolean AXValueGetValue(AXValueRef value, AXValueType theType, void* valuePtr);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
