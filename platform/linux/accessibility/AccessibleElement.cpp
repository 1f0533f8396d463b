#include "platform/linux/accessibility/AccessibleElement.h"

#include <utility>

#include "platform/linux/accessibility/StatusItemElement.h"
#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

constexpr std::int32_t firstAction = 0;

}  // namespace

AccessibleElement::AccessibleElement(std::shared_ptr<const LinuxAccessibility::Desktop> desktop, AccessibleName name,
                                     Kind kind, ProcessID owner, Duration timeout)
    : LinuxElement("accessible " + name.destination + name.path, owner, timeout),
      desktop_(std::move(desktop)),
      name_(std::move(name)),
      kind_(kind) {}

void AccessibleElement::prefetch() {
    details_.prepare([this] { return request(); });
}

AttributeAnswer AccessibleElement::read(std::string_view attribute) {
    if (attribute == "AXTitle") return readText("Name");
    if (attribute == "AXDescription") return readText("Description");
    const auto details = this->details(attribute);
    if (!details || !details->wait(timeout())) return failed(AccessibilityError::cannotComplete);
    if (attribute == "AXChildren") return children(*details);
    if (!details->frame()) return failed(AccessibilityError::noValue);
    if (attribute == "AXPosition") return {AccessibilityError::success, {details->frame()->origin}};
    if (attribute == "AXSize") return {AccessibilityError::success, {details->frame()->size}};
    return failed(AccessibilityError::attributeUnsupported);
}

AccessibilityError AccessibleElement::perform(std::string_view action) {
    Bus* const bus = desktop_->accessibility.bus();
    if (action != "AXPress" || bus == nullptr) return AccessibilityError::actionUnsupported;
    const BusReply reply =
        bus->callAndWait({name_.destination, name_.path, "org.a11y.atspi.Action", "DoAction", {firstAction}}, timeout());
    return reply.isError() ? accessibilityError(reply.error) : AccessibilityError::success;
}

std::shared_ptr<AccessibleDetails> AccessibleElement::details(std::string_view attribute) {
    return details_.forReading(attribute, [this] { return request(); });
}

std::shared_ptr<AccessibleDetails> AccessibleElement::request() const {
    Bus* const bus = desktop_->accessibility.bus();
    if (bus == nullptr) return nullptr;
    AccessibleDetails::StandsForItem standsForItem;
    if (kind_ == Kind::part) {
        standsForItem = [desktop = desktop_](const std::string& text) { return desktop->items.itemAt(text).has_value(); };
    }
    return AccessibleDetails::request(*bus, name_, standsForItem);
}

AttributeAnswer AccessibleElement::children(const AccessibleDetails& details) const {
    AttributeValue::Array children;
    if (const auto item = desktop_->items.itemAt(details.description())) {
        children.push_back({AccessibilityElement(std::make_shared<StatusItemElement>(desktop_, *item, nullptr, timeout()))});
        return {AccessibilityError::success, {std::move(children)}};
    }
    if (!details.children()) return failed(AccessibilityError::noValue);
    for (const AccessibleName& name : *details.children()) {
        // Callers that list objects read the frame and children of each next, so all are requested at once.
        const auto element = std::make_shared<AccessibleElement>(desktop_, name, Kind::part, owner(), timeout());
        element->prefetch();
        children.push_back({AccessibilityElement(element)});
    }
    return {AccessibilityError::success, {std::move(children)}};
}

AttributeAnswer AccessibleElement::readText(const std::string& property) const {
    Bus* const bus = desktop_->accessibility.bus();
    if (bus == nullptr) return failed(AccessibilityError::cannotComplete);
    const BusReply reply =
        bus->callAndWait(propertyCall(name_.destination, name_.path, "org.a11y.atspi.Accessible", property), timeout());
    if (reply.isError()) return failed(accessibilityError(reply.error));
    return textAnswer(reply.first().string());
}

}  // namespace ovin
