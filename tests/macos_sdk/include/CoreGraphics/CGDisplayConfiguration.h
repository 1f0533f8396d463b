#pragma once

#include <CoreGraphics/CGDirectDisplay.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef struct _CGDisplayConfigRef* CGDisplayConfigRef;

typedef CF_OPTIONS(uint32_t, CGConfigureOption) {
    kCGConfigureForAppOnly = 0,
    kCGConfigureForSession = 1,
    kCGConfigurePermanently = 2
};

CF_EXPORT CGError CGBeginDisplayConfiguration(CGDisplayConfigRef _Nullable* _Nullable config);
CF_EXPORT CGError CGConfigureDisplayWithDisplayMode(CGDisplayConfigRef _Nullable config, CGDirectDisplayID display,
                                                    CGDisplayModeRef _Nullable mode, CFDictionaryRef _Nullable options);
CF_EXPORT CGError CGCompleteDisplayConfiguration(CGDisplayConfigRef _Nullable config, CGConfigureOption option);
CF_EXPORT CGError CGCancelDisplayConfiguration(CGDisplayConfigRef _Nullable config);
CF_EXPORT boolean_t CGDisplayIsInMirrorSet(CGDirectDisplayID display);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
