#pragma once

#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFDictionary.h>
#include <CoreGraphics/CGError.h>
#include <CoreGraphics/CGGeometry.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef int boolean_t;
typedef uint32_t CGDirectDisplayID;
typedef struct CF_BRIDGED_TYPE(id) CGDisplayMode* CGDisplayModeRef;

#define kCGNullDirectDisplay ((CGDirectDisplayID)0)

CF_EXPORT const CFStringRef kCGDisplayShowDuplicateLowResolutionModes API_AVAILABLE(macos(10.8));

CF_EXPORT CGDirectDisplayID CGMainDisplayID(void);
CF_EXPORT CGRect CGDisplayBounds(CGDirectDisplayID display);
CF_EXPORT CGDisplayModeRef _Nullable CGDisplayCopyDisplayMode(CGDirectDisplayID display);
CF_EXPORT CFArrayRef _Nullable CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, CFDictionaryRef _Nullable options);
CF_EXPORT size_t CGDisplayModeGetWidth(CGDisplayModeRef _Nullable mode);
CF_EXPORT size_t CGDisplayModeGetHeight(CGDisplayModeRef _Nullable mode);
CF_EXPORT size_t CGDisplayModeGetPixelWidth(CGDisplayModeRef _Nullable mode) API_AVAILABLE(macos(10.8));
CF_EXPORT size_t CGDisplayModeGetPixelHeight(CGDisplayModeRef _Nullable mode) API_AVAILABLE(macos(10.8));
CF_EXPORT int32_t CGDisplayModeGetIODisplayModeID(CGDisplayModeRef _Nullable mode);
CF_EXPORT bool CGDisplayModeIsUsableForDesktopGUI(CGDisplayModeRef _Nullable mode);
CF_EXPORT CFTypeID CGDisplayModeGetTypeID(void);
CF_EXPORT CGDisplayModeRef _Nullable CGDisplayModeRetain(CGDisplayModeRef _Nullable mode);
CF_EXPORT void CGDisplayModeRelease(CGDisplayModeRef _Nullable mode);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
