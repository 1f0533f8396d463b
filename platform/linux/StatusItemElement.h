#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "platform/linux/ItemProperties.h"
#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/LinuxElement.h"
#include "platform/linux/StatusItemClick.h"

namespace ovin {

/// A status item of some program.
class StatusItemElement final : public LinuxElement {
public:
    StatusItemElement(std::shared_ptr<const LinuxAccessibility::Desktop> desktop, StatusNotifierItem item, Duration timeout);

    /// Asks for the item's properties without waiting for them.
    void prefetch() { (void)properties(); }

    [[nodiscard]] AttributeAnswer read(std::string_view attribute) override;
    [[nodiscard]] AccessibilityError perform(std::string_view action) override;

private:
    /// The latest properties, asked for again when they are no longer of this moment.
    [[nodiscard]] std::shared_ptr<ItemProperties> properties();
    [[nodiscard]] AccessibilityError request(const ItemProperties& properties, StatusItemRequest request);
    [[nodiscard]] AccessibilityError callAtPosition(const ItemProperties& properties, const std::string& method);

    const std::shared_ptr<const LinuxAccessibility::Desktop> desktop_;
    const StatusNotifierItem item_;
    std::mutex mutex_;
    std::shared_ptr<ItemProperties> properties_;
};

}  // namespace ovin
