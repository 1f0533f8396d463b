#pragma once

#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFString.h>
#include <HIServices/AXError.h>
#include <sys/types.h>

CF_ASSUME_NONNULL_BEGIN
CF_IMPLICIT_BRIDGING_ENABLED

typedef const struct CF_BRIDGED_TYPE(id) __AXUIElement* AXUIElementRef;

CF_EXPORT CFStringRef kAXTrustedCheckOptionPrompt API_AVAILABLE(macos(10.9));

CF_EXPORT Boolean AXIsProcessTrusted(void);
CF_EXPORT Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options) API_AVAILABLE(macos(10.9));
CF_EXPORT CFTypeID AXUIElementGetTypeID(void);
CF_EXPORT AXUIElementRef AXUIElementCreateApplication(pid_t pid);
CF_EXPORT AXUIElementRef AXUIElementCreateSystemWide(void);
CF_EXPORT AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds);
CF_EXPORT AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                                CFTypeRef _Nullable* _Nonnull value CF_RETURNS_RETAINED);
CF_EXPORT AXError AXUIElementGetPid(AXUIElementRef element, pid_t* pid);
CF_EXPORT AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
CF_EXPORT AXError AXUIElementCopyActionNames(AXUIElementRef element,
                                             CFArrayRef _Nullable* _Nonnull names CF_RETURNS_RETAINED);

CF_IMPLICIT_BRIDGING_DISABLED
CF_ASSUME_NONNULL_END
