#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

@class NSDictionary<KeyType, ObjectType>;

typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;

// Their fields are of no use here; only their addresses are.
typedef struct CFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;
typedef struct CFDictionaryValueCallBacks CFDictionaryValueCallBacks;
CF_EXPORT const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
CF_EXPORT const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

CF_EXPORT CFTypeID CFDictionaryGetTypeID(void);
CF_EXPORT CFDictionaryRef CFDictionaryCreate(CFAllocatorRef _Nullable allocator, const void* _Nullable* _Nullable keys,
                                             const void* _Nullable* _Nullable values, CFIndex numValues,
                                             const CFDictionaryKeyCallBacks* _Nullable keyCallBacks,
                                             const CFDictionaryValueCallBacks* _Nullable valueCallBacks);
CF_EXPORT const void* _Nullable CFDictionaryGetValue(CFDictionaryRef theDict, const void* _Nullable key);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
