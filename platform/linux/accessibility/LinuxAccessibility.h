#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AccessibilityConsent.h"
#include "platform/linux/items/BarSettings.h"
#include "platform/linux/items/ItemMenus.h"
#include "platform/linux/items/StatusNotifierItems.h"
#include "platform/linux/system/Bus.h"

namespace ovin {

/// The Accessibility interface over the buses of a Linux desktop.
///
/// A process that has registered status items has an extras menu bar, "AXExtrasMenuBar", with these items as its children.
/// Their texts are the properties of the StatusNotifierItem: the title is "AXTitle", the tool tip (or else the icon's
/// description) is "AXDescription", the id is "AXIdentifier". The windows of a process and what is in them are its
/// accessible objects. An object within a window, however deep, whose description is the address of a status item has that
/// item as its only child; menu bars that show items give such descriptions. "AXPress" does what a click on the item does,
/// "AXShowMenu" shows its menu.
///
/// Only the layout of a bar needs the accessibility bus. So this program is trusted unless assistive programs are known to
/// be disabled, such a bar runs and the user has not been asked. Who has refused to enable them is not asked by the ledge
/// again: requests for windows are refused then.
class LinuxAccessibility final : public Accessibility {
public:
    /// What the elements need of the desktop; shared with them.
    struct Desktop {
        Bus& session;
        AccessibilityBus& accessibility;
        AccessibilityConsent& consent;
        StatusNotifierItems& items;
        ItemMenus& menus;
        const BarSettings& bar;
        /// Whether some bar shows what is registered with the watcher. Any thread.
        const std::atomic<bool>& hasBar;
    };

    /// Asks the user whether to enable assistive programs, and calls its argument with the answer.
    using Question = std::function<void(std::function<void(bool isAgreed)> answered)>;

    /// Everything in `desktop` outlives this object, all elements and the question.
    LinuxAccessibility(const Desktop& desktop, Question askUser);

    [[nodiscard]] bool isProcessTrusted() const override;
    void promptForTrust() override;
    [[nodiscard]] AccessibilityElement applicationElement(ProcessID pid) const override;
    [[nodiscard]] std::optional<std::vector<AccessibilityElement>> applicationElementsToReadTogether(
        const std::vector<ProcessID>& pids) const override;
    void setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const override;
    [[nodiscard]] AttributeAnswer copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) const override;
    [[nodiscard]] ProcessIDAnswer processIdentifier(const AccessibilityElement& element) const override;
    /// Bars draw all items that do not ask to be hidden, unless their users have told them otherwise. Of bars whose layout
    /// can be read nothing is taken as known.
    [[nodiscard]] bool isDrawnByProtocol(const AccessibilityElement& item) const override;
    void observeBar(std::function<void()> handler) override { barChanged_ = std::move(handler); }
    /// To be called when the bar, or what it is told to draw, has changed. Main thread only.
    void barHasChanged() const {
        if (barChanged_) barChanged_();
    }
    [[nodiscard]] AccessibilityError performAction(const AccessibilityElement& element,
                                                   std::string_view action) const override;

private:
    const std::shared_ptr<const Desktop> desktop_;
    const Question askUser_;
    std::function<void()> barChanged_;
};

}  // namespace ovin
