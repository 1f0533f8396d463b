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
    if (attribute == "AXIdentifier") return textAnswer(properties->traits().id);
    return failed(AccessibilityError::attributeUnsupported);
}

AccessibilityError StatusItemElement::perform(std::string_view action) {
    const bool isPress = action == "AXPress";
    if (!isPress && action != "AXShowMenu") return AccessibilityError::actionUnsupported;
    if (!isRegistered()) return AccessibilityError::invalidElement;
    const Deadline deadline = std::chrono::steady_clock::now() + timeout();
    const auto traits = traitsForClick(deadline);
    if (!traits) return AccessibilityError::cannotComplete;

    const StatusItemClickTraits click{traits->isMenu, traits->menu.has_value()};
    AccessibilityError error = AccessibilityError::actionUnsupported;
    for (const StatusItemRequest request : isPress ? leftClickRequests(click) : rightClickRequests(click)) {
        error = this->request(*traits, request, deadline);
        if (error == AccessibilityError::success || error == AccessibilityError::cannotComplete) break;
    }
    return error;
}

bool StatusItemElement::isDrawnByProtocol() {
    const auto request = properties_.last();
    if (request && request->isDone() && !request->error().empty()) return false;
    // An item that has told nothing yet is most likely one that the bar will draw.
    const auto traits = item_.traits->get().value_or(StatusItemTraits());
    return desktop_->bar.draws(traits.id, traits.isPassive);
}

/// An item is gone for all references as soon as its program ends or unregisters it.
bool StatusItemElement::isRegistered() const { return desktop_->items.itemAt(item_.address) == item_; }

std::shared_ptr<ItemProperties> StatusItemElement::propertiesForReading(std::string_view attribute) {
    return properties_.forReading(
        attribute, [this] { return batch_ ? batch_->request(item_) : ItemProperties::request(desktop_->session, item_); });
}

/// The properties that decide a click hardly ever change, so the last reading is good enough. A busy program then gets the
/// click itself instead of a question that it may answer too late.
std::optional<StatusItemTraits> StatusItemElement::traitsForClick(Deadline deadline) {
    if (auto known = item_.traits->get()) return known;
    // Not by the batch, whose request may have been sent long ago and in vain.
    const auto properties =
        properties_.forReading("AXPress", [this] { return ItemProperties::request(desktop_->session, item_); });
    if (!properties->waitUntil(deadline)) return std::nullopt;
    return properties->traits();
}

AccessibilityError StatusItemElement::request(const StatusItemTraits& traits, StatusItemRequest request, Deadline deadline) {
    switch (request) {
        case StatusItemRequest::menu:
            if (traits.menu &&
                desktop_->menus.show(item_.address.destination, *traits.menu, deadline - std::chrono::steady_clock::now()))
                return AccessibilityError::success;
            return AccessibilityError::actionUnsupported;
        case StatusItemRequest::activate:
            return callAtPosition(traits.interface, "Activate", deadline);
        case StatusItemRequest::secondaryActivate:
            return callAtPosition(traits.interface, "SecondaryActivate", deadline);
        case StatusItemRequest::contextMenu:
            return callAtPosition(traits.interface, "ContextMenu", deadline);
    }
    return AccessibilityError::failure;
}

AccessibilityError StatusItemElement::callAtPosition(const std::string& interface, const std::string& method,
                                                     Deadline deadline) {
    const Point position = desktop_->menus.position();
    const auto coordinate = [](double value) { return static_cast<std::int32_t>(std::lround(value)); };
    const BusReply reply = desktop_->session.callAndWait(
        {item_.address.destination, item_.address.path, interface, method, {coordinate(position.x), coordinate(position.y)}},
        deadline - std::chrono::steady_clock::now());
    return reply.isError() ? accessibilityError(reply.error) : AccessibilityError::success;
}

}  // namespace ovin
