#include "platform/macos/accessibility/MacElement.h"

#include <utility>

namespace ovin {

MacElement::MacElement(ovin::Reference<AXUIElementRef> element, MessagingTimeout timeout)
    : element_(std::move(element)), timeout_(0) {
    if (timeout > 0) setTimeout(timeout);
}

bool MacElement::isEqual(const AccessibilityElement::Reference& other) const {
    AXUIElementRef others = static_cast<const MacElement&>(other).element();
    if (element() == nullptr || others == nullptr) return element() == others;
    return CFEqual(element(), others) != 0;
}

std::uint64_t MacElement::hash() const { return element() == nullptr ? 0 : CFHash(element()); }

void MacElement::setTimeout(MessagingTimeout timeout) {
    timeout_ = timeout;
    if (element() != nullptr) AXUIElementSetMessagingTimeout(element(), timeout);
}

AccessibilityElement makeElement(Reference<AXUIElementRef> element, MessagingTimeout timeout) {
    return AccessibilityElement(std::make_shared<MacElement>(std::move(element), timeout));
}

MacElement& macElement(const AccessibilityElement& element) { return static_cast<MacElement&>(element.reference()); }

}  // namespace ovin
