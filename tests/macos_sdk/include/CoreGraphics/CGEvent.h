#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreGraphics/CGGeometry.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef struct CF_BRIDGED_TYPE(id) __CGEvent* CGEventRef;
typedef struct CF_BRIDGED_TYPE(id) __CGEventSource* CGEventSourceRef;
typedef uint16_t CGKeyCode;

typedef CF_ENUM(uint32_t, CGEventType) {
    kCGEventLeftMouseDown = 1,
    kCGEventLeftMouseUp = 2,
    kCGEventRightMouseDown = 3,
    kCGEventRightMouseUp = 4,
    kCGEventMouseMoved = 5
};
typedef CF_ENUM(uint32_t, CGMouseButton) { kCGMouseButtonLeft = 0, kCGMouseButtonRight = 1 };
typedef CF_ENUM(uint32_t, CGEventTapLocation) { kCGHIDEventTap = 0, kCGSessionEventTap = 1 };
typedef CF_OPTIONS(uint64_t, CGEventFlags) { kCGEventFlagMaskControl = 0x40000 };

CF_EXPORT CGEventRef _Nullable CGEventCreateMouseEvent(CGEventSourceRef _Nullable source, CGEventType mouseType,
                                                       CGPoint mouseCursorPosition, CGMouseButton mouseButton);
CF_EXPORT CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode virtualKey,
                                                          bool keyDown);
CF_EXPORT void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
CF_EXPORT void CGEventPost(CGEventTapLocation tap, CGEventRef _Nullable event);
CF_EXPORT bool CGPreflightPostEventAccess(void) API_AVAILABLE(macos(10.15));
CF_EXPORT bool CGRequestPostEventAccess(void) API_AVAILABLE(macos(10.15));
CF_EXPORT bool CGPreflightScreenCaptureAccess(void) API_AVAILABLE(macos(10.15));
CF_EXPORT bool CGRequestScreenCaptureAccess(void) API_AVAILABLE(macos(10.15));

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
