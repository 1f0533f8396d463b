// For Objective-C++ files only.
#pragma once

#import <ApplicationServices/ApplicationServices.h>

#include <atomic>
#include <chrono>
#include <memory>

#include "platform/Accessibility.h"
#include "platform/macos/system/Reference.h"

namespace ovin {

/// In seconds, as the system takes it; 0 means the system's own timeout.
using MessagingTimeout = float;

/// One of the system's references to an element, and the timeout of requests to it. A timeout belongs to the reference and
/// not to the element. The constructor sets it, so that no reference can send a request before it has one.
class MacElement final : public AccessibilityElement::Reference {
public:
    /// `element` may be null: it then stands for an element of no process.
    MacElement(ovin::Reference<AXUIElementRef> element, MessagingTimeout timeout);

    [[nodiscard]] bool isEqual(const AccessibilityElement::Reference& other) const override;
    [[nodiscard]] std::uint64_t hash() const override;

    void setTimeout(MessagingTimeout timeout);
    [[nodiscard]] MessagingTimeout timeout() const { return timeout_; }

    /// May be null.
    [[nodiscard]] AXUIElementRef element() const { return element_.get(); }

private:
    const ovin::Reference<AXUIElementRef> element_;
    std::atomic<MessagingTimeout> timeout_;
};

[[nodiscard]] AccessibilityElement makeElement(Reference<AXUIElementRef> element, MessagingTimeout timeout);

/// `element` is one of this world.
[[nodiscard]] MacElement& macElement(const AccessibilityElement& element);

}  // namespace ovin
