#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/accessibility/LinuxAccessibility.h"
#include "platform/linux/accessibility/LinuxElement.h"
#include "platform/linux/items/ItemPropertiesBatch.h"
#include "platform/linux/items/StatusItemClick.h"

namespace ovin {

/// A status item of some program.
class StatusItemElement final : public LinuxElement {
public:
    /// `batch` contains the item if its properties are to be requested together with those of others; otherwise null.
    StatusItemElement(std::shared_ptr<const LinuxAccessibility::Desktop> desktop, StatusNotifierItem item,
                      std::shared_ptr<ItemPropertiesBatch> batch, Duration timeout);

    [[nodiscard]] AttributeAnswer read(std::string_view attribute) override;
    [[nodiscard]] AccessibilityError perform(std::string_view action) override;
    [[nodiscard]] bool isDrawnByProtocol() override;

private:
    using Deadline = std::chrono::steady_clock::time_point;

    [[nodiscard]] bool isRegistered() const;
    [[nodiscard]] std::shared_ptr<ItemProperties> propertiesForReading(std::string_view attribute);
    /// Nothing when the item does not answer in time.
    [[nodiscard]] std::optional<StatusItemTraits> traitsForClick(Deadline deadline);
    [[nodiscard]] AccessibilityError request(const StatusItemTraits& traits, StatusItemRequest request, Deadline deadline);
    [[nodiscard]] AccessibilityError callAtPosition(const std::string& interface, const std::string& method,
                                                    Deadline deadline);

    const std::shared_ptr<const LinuxAccessibility::Desktop> desktop_;
    const StatusNotifierItem item_;
    const std::shared_ptr<ItemPropertiesBatch> batch_;
    CurrentRequest<ItemProperties> properties_;
};

}  // namespace ovin
