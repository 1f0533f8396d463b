#pragma once

#include <CoreFoundation/CFBase.h>

// In the system these are made by a function of the compiler's, as here; they are never released.
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef UInt32 CFStringEncoding;
typedef CF_ENUM(CFStringEncoding, CFStringBuiltInEncodings) {
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingUTF16 = 0x0100,
    kCFStringEncodingUTF16LE = 0x14000100
};

CF_EXPORT CFTypeID CFStringGetTypeID(void);
CF_EXPORT CFIndex CFStringGetLength(CFStringRef theString);
CF_EXPORT CFIndex CFStringGetBytes(CFStringRef theString, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                                   Boolean isExternalRepresentation, UInt8* _Nullable buffer, CFIndex maxBufLen,
                                   CFIndex* _Nullable usedBufLen);
CF_EXPORT CFStringRef _Nullable CFStringCreateWithBytes(CFAllocatorRef _Nullable alloc, const UInt8* bytes, CFIndex numBytes,
                                                        CFStringEncoding encoding, Boolean isExternalRepresentation);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
