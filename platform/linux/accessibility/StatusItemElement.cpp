#include "platform/linux/accessibility/StatusItemElement.h"

#include <cmath>
#include <utility>

namespace ovin {

StatusItemElement::StatusItemElement(std::shared_ptr<const LinuxAccessibility::Desktop> desktop, StatusNotifierItem item,
                                     std::shared_ptr<ItemPropertiesBatch> batch, Duration timeout)
    : LinuxElement("item " + item.address.joined(), item.pid, timeout),
      desktop_(std::move(desktop)),
      item_(std::move(item)),
      batch_(std::move(batch)) {}

AttributeAnswer StatusItemElement::read(std::string_view attribute) {
    if (!isRegistered()) return failed(AccessibilityError::invalidElement);
    const auto properties = propertiesForReading(attribute);
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
    if (!isRegistered()) return AccessibilityError::invalidElement;
    const Deadline deadline = std::chrono::steady_clock::now() + timeout();
    const auto properties = propertiesForClick();
    if (!properties->wait(timeout())) return AccessibilityError::cannotComplete;

    const StatusItemClickTraits traits{properties->isMenu(), properties->menu().has_value()};
    AccessibilityError error = AccessibilityError::actionUnsupported;
    for (const StatusItemRequest request : isPress ? leftClickRequests(traits) : rightClickRequests(traits)) {
        error = this->request(*properties, request, deadline);
        if (error == AccessibilityError::success || error == AccessibilityError::cannotComplete) break;
    }
    return error;
}

bool StatusItemElement::isDrawnByProtocol() {
    const auto known = properties_.last();
    return known && known->isDone() && known->error().empty() && desktop_->bar.draws(known->id(), known->isPassive());
}

/// An item is gone for all references as soon as its program ends or unregisters it.
bool StatusItemElement::isRegistered() const { return desktop_->items.itemAt(item_.address) == item_; }

std::shared_ptr<ItemProperties> StatusItemElement::propertiesForReading(std::string_view attribute) {
    return properties_.forReading(
        attribute, [this] { return batch_ ? batch_->request(item_) : ItemProperties::request(desktop_->session, item_); });
}

/// The properties that decide a click hardly ever change, so the last reading is good enough. A busy program then gets the
/// click itself instead of a question that it may answer too late.
std::shared_ptr<ItemProperties> StatusItemElement::propertiesForClick() {
    auto known = properties_.last();
    if (known && known->isDone() && known->error().empty()) return known;
    // Not by the batch, whose request may have been sent long ago and in vain.
    return properties_.forReading("AXPress", [this] { return ItemProperties::request(desktop_->session, item_); });
}

AccessibilityError StatusItemElement::request(const ItemProperties& properties, StatusItemRequest request,
                                              Deadline deadline) {
    const auto menu = properties.menu();
    switch (request) {
        case StatusItemRequest::menu:
            if (menu && desktop_->menus.show(item_.address.destination, *menu, deadline - std::chrono::steady_clock::now()))
                return AccessibilityError::success;
            return AccessibilityError::actionUnsupported;
        case StatusItemRequest::activate:
            return callAtPosition(properties, "Activate", deadline);
        case StatusItemRequest::secondaryActivate:
            return callAtPosition(properties, "SecondaryActivate", deadline);
        case StatusItemRequest::contextMenu:
            return callAtPosition(properties, "ContextMenu", deadline);
    }
    return AccessibilityError::failure;
}

AccessibilityError StatusItemElement::callAtPosition(const ItemProperties& properties, const std::string& method,
                                                     Deadline deadline) {
    const Point position = desktop_->menus.position();
    const auto coordinate = [](double value) { return static_cast<std::int32_t>(std::lround(value)); };
    const BusReply reply = desktop_->session.callAndWait({item_.address.destination,
                                                          item_.address.path,
                                                          properties.interface(),
                                                          method,
                                                          {coordinate(position.x), coordinate(position.y)}},
                                                         deadline - std::chrono::steady_clock::now());
    return reply.isError() ? accessibilityError(reply.error) : AccessibilityError::success;
}

}  // namespace ovin
