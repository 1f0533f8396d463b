#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFString.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef CFStringRef CFRunLoopMode;
typedef struct CF_BRIDGED_TYPE(id) __CFRunLoop* CFRunLoopRef;
typedef struct CF_BRIDGED_TYPE(id) __CFRunLoopSource* CFRunLoopSourceRef;

typedef struct {
    CFIndex version;
    void* _Nullable info;
    const void* _Nullable (*_Nullable retain)(const void* _Nullable info);
    void (*_Nullable release)(const void* _Nullable info);
    CFStringRef _Nullable (*_Nullable copyDescription)(const void* _Nullable info);
    Boolean (*_Nullable equal)(const void* info1, const void* info2);
    CFHashCode (*_Nullable hash)(const void* _Nullable info);
    void (*_Nullable schedule)(void* _Nullable info, CFRunLoopRef rl, CFRunLoopMode mode);
    void (*_Nullable cancel)(void* _Nullable info, CFRunLoopRef rl, CFRunLoopMode mode);
    void (*perform)(void* _Nullable info);
} CFRunLoopSourceContext;

CF_EXPORT const CFRunLoopMode kCFRunLoopDefaultMode;
CF_EXPORT const CFRunLoopMode kCFRunLoopCommonModes;

CF_EXPORT CFRunLoopRef CFRunLoopGetMain(void);
CF_EXPORT void CFRunLoopWakeUp(CFRunLoopRef rl);
CF_EXPORT void CFRunLoopAddSource(CFRunLoopRef rl, CFRunLoopSourceRef source, CFRunLoopMode mode);
CF_EXPORT CFRunLoopSourceRef CFRunLoopSourceCreate(CFAllocatorRef _Nullable allocator, CFIndex order,
                                                   CFRunLoopSourceContext* context);
CF_EXPORT void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source);
CF_EXPORT void CFRunLoopSourceSignal(CFRunLoopSourceRef source);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
