#pragma once

#include <memory>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/items/ItemMenus.h"
#include "platform/linux/items/StatusNotifierItems.h"
#include "platform/linux/system/Bus.h"

namespace ovin {

/// The Accessibility interface over the buses of a Linux desktop.
///
/// A process that has registered status items has an extras menu bar, "AXExtrasMenuBar", with these items as its children.
/// Their texts are the properties of the StatusNotifierItem: the title is "AXTitle", the tool tip (or else the icon's
/// description) is "AXDescription", the id is "AXIdentifier". The windows of a process and what is in them are its
/// accessible objects. An object whose description is the address of a status item stands for that item; menu bars that show
/// items give such descriptions. "AXPress" does what a click on the item does, "AXShowMenu" shows its menu.
///
/// This program is trusted when assistive programs are enabled in the session.
class LinuxAccessibility final : public Accessibility {
public:
    /// What the elements need of the desktop; shared with them.
    struct Desktop {
        Bus& session;
        AccessibilityBus& accessibility;
        StatusNotifierItems& items;
        ItemMenus& menus;
    };

    /// Everything in `desktop` outlives this object and all elements. `askUser` asks the user whether to enable assistive
    /// programs, and calls its argument if the user agrees.
    LinuxAccessibility(const Desktop& desktop, std::function<void(std::function<void()>)> askUser);

    [[nodiscard]] bool isProcessTrusted() const override;
    void promptForTrust() override;
    [[nodiscard]] AccessibilityElement applicationElement(ProcessID pid) const override;
    void setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const override;
    [[nodiscard]] AttributeAnswer copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) const override;
    [[nodiscard]] ProcessIDAnswer processIdentifier(const AccessibilityElement& element) const override;
    [[nodiscard]] AccessibilityError performAction(const AccessibilityElement& element,
                                                   std::string_view action) const override;

private:
    const std::shared_ptr<const Desktop> desktop_;
    const std::function<void(std::function<void()>)> askUser_;
};

}  // namespace ovin
