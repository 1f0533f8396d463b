#include "platform/macos/accessibility/MacAccessibility.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

#include "platform/macos/accessibility/ElementValues.h"
#include "platform/macos/accessibility/MacElement.h"
#include "platform/macos/system/Reference.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

/// The interface has the system's numbers.
AccessibilityError errorOf(AXError error) { return static_cast<AccessibilityError>(static_cast<std::int32_t>(error)); }

static_assert(static_cast<std::int32_t>(AccessibilityError::success) == kAXErrorSuccess);
static_assert(static_cast<std::int32_t>(AccessibilityError::failure) == kAXErrorFailure);
static_assert(static_cast<std::int32_t>(AccessibilityError::illegalArgument) == kAXErrorIllegalArgument);
static_assert(static_cast<std::int32_t>(AccessibilityError::invalidElement) == kAXErrorInvalidUIElement);
static_assert(static_cast<std::int32_t>(AccessibilityError::cannotComplete) == kAXErrorCannotComplete);
static_assert(static_cast<std::int32_t>(AccessibilityError::attributeUnsupported) == kAXErrorAttributeUnsupported);
static_assert(static_cast<std::int32_t>(AccessibilityError::actionUnsupported) == kAXErrorActionUnsupported);
static_assert(static_cast<std::int32_t>(AccessibilityError::notImplemented) == kAXErrorNotImplemented);
static_assert(static_cast<std::int32_t>(AccessibilityError::apiDisabled) == kAXErrorAPIDisabled);
static_assert(static_cast<std::int32_t>(AccessibilityError::noValue) == kAXErrorNoValue);

/// To the system, 0 means its own timeout, so rounding must not turn a positive timeout into 0.
MessagingTimeout timeoutOf(std::chrono::nanoseconds timeout) {
    const std::chrono::duration<MessagingTimeout> seconds = timeout;
    return std::max(seconds.count(), std::numeric_limits<MessagingTimeout>::min());
}

class MacAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() const override { return AXIsProcessTrusted() != 0; }

    void promptForTrust() override {
        NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
        AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
    }

    [[nodiscard]] AccessibilityElement applicationElement(ProcessID pid) const override {
        return makeElement(Reference<AXUIElementRef>::adopt(AXUIElementCreateApplication(pid)), 0);
    }

    void setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const override {
        macElement(element).setTimeout(timeoutOf(timeout));
    }

    [[nodiscard]] AttributeAnswer copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) const override {
        const MacElement& asked = macElement(element);
        if (asked.element() == nullptr) return {AccessibilityError::invalidElement, {}};
        @autoreleasepool {
            NSString* name = toNSString(attribute);
            CFTypeRef value = nullptr;
            const AXError error = AXUIElementCopyAttributeValue(asked.element(), (__bridge CFStringRef)name, &value);
            // Owned from here on, also when there is a value despite an error.
            const auto owned = Reference<CFTypeRef>::adopt(value);
            if (error != kAXErrorSuccess) return {errorOf(error), {}};
            return {AccessibilityError::success, attributeValue(owned.get(), asked.timeout())};
        }
    }

    [[nodiscard]] ProcessIDAnswer processIdentifier(const AccessibilityElement& element) const override {
        AXUIElementRef asked = macElement(element).element();
        if (asked == nullptr) return {AccessibilityError::invalidElement, 0};
        pid_t pid = 0;
        const AXError error = AXUIElementGetPid(asked, &pid);
        return {errorOf(error), pid};
    }

    [[nodiscard]] AccessibilityError performAction(const AccessibilityElement& element,
                                                   std::string_view action) const override {
        AXUIElementRef asked = macElement(element).element();
        if (asked == nullptr) return AccessibilityError::invalidElement;
        @autoreleasepool {
            NSString* name = toNSString(action);
            return errorOf(AXUIElementPerformAction(asked, (__bridge CFStringRef)name));
        }
    }
};

}  // namespace

std::unique_ptr<Accessibility> makeMacAccessibility() { return std::make_unique<MacAccessibility>(); }

}  // namespace ovin
