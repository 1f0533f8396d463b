#include "platform/linux/StatusItemElement.h"

#include <cmath>
#include <utility>

namespace ovin {

StatusItemElement::StatusItemElement(std::shared_ptr<const LinuxAccessibility::Desktop> desktop, StatusNotifierItem item,
                                     Duration timeout)
    : LinuxElement("item " + item.address.joined(), item.pid, timeout),
      desktop_(std::move(desktop)),
      item_(std::move(item)) {}

AttributeAnswer StatusItemElement::read(std::string_view attribute) {
    const auto properties = this->properties();
    if (!properties->wait(timeout())) return failed(AccessibilityError::cannotComplete);
    if (!properties->error().empty()) return failed(accessibilityError(properties->error()));
    if (attribute == "AXTitle") return textAnswer(properties->title());
    if (attribute == "AXDescription") return textAnswer(properties->description());
    if (attribute == "AXIdentifier") return textAnswer(properties->id());
    return failed(AccessibilityError::attributeUnsupported);
}

AccessibilityError StatusItemElement::perform(std::string_view action) {
    const bool isPress = action == "AXPress";
    if (!isPress && action != "AXShowMenu") return AccessibilityError::actionUnsupported;
    const auto properties = this->properties();
    if (!properties->wait(timeout())) return AccessibilityError::cannotComplete;

    const StatusItemClickTraits traits{properties->isMenu(), properties->menu().has_value()};
    AccessibilityError error = AccessibilityError::actionUnsupported;
    for (const StatusItemRequest request : isPress ? leftClickRequests(traits) : rightClickRequests(traits)) {
        error = this->request(*properties, request);
        if (error == AccessibilityError::success || error == AccessibilityError::cannotComplete) break;
    }
    return error;
}

std::shared_ptr<ItemProperties> StatusItemElement::properties() {
    const std::lock_guard lock(mutex_);
    if (!properties_ || properties_->isStale(timeout())) properties_ = ItemProperties::request(desktop_->session, item_);
    return properties_;
}

AccessibilityError StatusItemElement::request(const ItemProperties& properties, StatusItemRequest request) {
    const auto menu = properties.menu();
    switch (request) {
        case StatusItemRequest::menu:
            if (menu && desktop_->menus.show(item_.address.destination, *menu)) return AccessibilityError::success;
            return AccessibilityError::actionUnsupported;
        case StatusItemRequest::activate:
            return callAtPosition(properties, "Activate");
        case StatusItemRequest::secondaryActivate:
            return callAtPosition(properties, "SecondaryActivate");
        case StatusItemRequest::contextMenu:
            return callAtPosition(properties, "ContextMenu");
    }
    return AccessibilityError::failure;
}

AccessibilityError StatusItemElement::callAtPosition(const ItemProperties& properties, const std::string& method) {
    const Point position = desktop_->menus.position();
    const auto coordinate = [](double value) { return static_cast<std::int32_t>(std::lround(value)); };
    const BusReply reply = desktop_->session.callAndWait({item_.address.destination,
                                                          item_.address.path,
                                                          properties.interface(),
                                                          method,
                                                          {coordinate(position.x), coordinate(position.y)}},
                                                         timeout());
    return reply.isError() ? accessibilityError(reply.error) : AccessibilityError::success;
}

}  // namespace ovin
