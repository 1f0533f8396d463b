#pragma once

#include <memory>
#include <string>

#include "platform/linux/accessibility/AccessibleDetails.h"
#include "platform/linux/accessibility/LinuxAccessibility.h"
#include "platform/linux/accessibility/LinuxElement.h"

namespace ovin {

/// An accessible object of some program.
class AccessibleElement final : public LinuxElement {
public:
    /// A part of a window, however deep in it, has a status item as its only child if its description is the address of one.
    /// A window has none, whatever its description.
    enum class Kind { window, part };

    AccessibleElement(std::shared_ptr<const LinuxAccessibility::Desktop> desktop, AccessibleName name, Kind kind,
                      ProcessID owner, Duration timeout);

    /// Asks for the object's frame and children without waiting for them.
    void prefetch();

    [[nodiscard]] AttributeAnswer read(std::string_view attribute) override;
    [[nodiscard]] AccessibilityError perform(std::string_view action) override;

private:
    /// The request to read an attribute from; null without an accessibility bus.
    [[nodiscard]] std::shared_ptr<AccessibleDetails> details(std::string_view attribute);
    [[nodiscard]] std::shared_ptr<AccessibleDetails> request() const;
    [[nodiscard]] AttributeAnswer children(const AccessibleDetails& details) const;
    [[nodiscard]] AttributeAnswer readText(const std::string& property) const;

    const std::shared_ptr<const LinuxAccessibility::Desktop> desktop_;
    const AccessibleName name_;
    const Kind kind_;
    CurrentRequest<AccessibleDetails> details_;
};

}  // namespace ovin
