#include "platform/linux/accessibility/LinuxAccessibility.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "platform/linux/accessibility/AccessibleElement.h"
#include "platform/linux/accessibility/LinuxElement.h"
#include "platform/linux/accessibility/StatusItemElement.h"
#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

using Desktop = std::shared_ptr<const LinuxAccessibility::Desktop>;
using Batch = std::shared_ptr<ItemPropertiesBatch>;

/// The messaging timeout of references that were given none.
constexpr std::chrono::seconds systemTimeout{5};

/// The items of a process, as the watcher lists them. Reading the list asks the process nothing.
class ExtrasMenuBarElement final : public LinuxElement {
public:
    ExtrasMenuBarElement(Desktop desktop, ProcessID owner, Batch batch, Duration timeout)
        : LinuxElement("extras " + std::to_string(owner), owner, timeout),
          desktop_(std::move(desktop)),
          batch_(std::move(batch)) {}

    [[nodiscard]] AttributeAnswer read(std::string_view attribute) override {
        if (attribute != "AXChildren") return failed(AccessibilityError::attributeUnsupported);
        const auto items = desktop_->items.itemsOf(owner());
        if (items.empty()) return failed(AccessibilityError::invalidElement);
        AttributeValue::Array children;
        for (const StatusNotifierItem& item : items) {
            // An item that has registered since is asked alone.
            const Batch batch = batch_ && batch_->contains(item) ? batch_ : nullptr;
            children.push_back(
                {AccessibilityElement(std::make_shared<StatusItemElement>(desktop_, item, batch, timeout()))});
        }
        return {AccessibilityError::success, {std::move(children)}};
    }

private:
    const Desktop desktop_;
    const Batch batch_;
};

class ApplicationElement final : public LinuxElement {
public:
    ApplicationElement(Desktop desktop, ProcessID pid, Batch batch)
        : LinuxElement("application " + std::to_string(pid), pid, systemTimeout),
          desktop_(std::move(desktop)),
          batch_(std::move(batch)) {}

    [[nodiscard]] AttributeAnswer read(std::string_view attribute) override {
        if (attribute == "AXExtrasMenuBar") return extrasMenuBar();
        if (attribute == "AXWindows") return windows();
        return failed(AccessibilityError::attributeUnsupported);
    }

private:
    AttributeAnswer extrasMenuBar() {
        if (desktop_->items.itemsOf(owner()).empty()) return failed(AccessibilityError::noValue);
        return {AccessibilityError::success,
                {AccessibilityElement(std::make_shared<ExtrasMenuBarElement>(desktop_, owner(), batch_, timeout()))}};
    }

    AttributeAnswer windows() {
        if (!desktop_->accessibility.waitForAnswer(timeout())) return failed(AccessibilityError::cannotComplete);
        // Asking would start the accessibility bus.
        if (!desktop_->accessibility.isEnabled()) {
            return failed(desktop_->consent.isGiven() ? AccessibilityError::cannotComplete
                                                      : AccessibilityError::apiDisabled);
        }
        AttributeValue::Array windows;
        for (const AccessibleName& name : desktop_->accessibility.windowsOf(owner(), timeout())) {
            windows.push_back({AccessibilityElement(
                std::make_shared<AccessibleElement>(desktop_, name, AccessibleElement::Kind::window, owner(), timeout()))});
        }
        if (windows.empty()) return failed(AccessibilityError::noValue);
        return {AccessibilityError::success, {std::move(windows)}};
    }

    const Desktop desktop_;
    const Batch batch_;
};

}  // namespace

LinuxAccessibility::LinuxAccessibility(const Desktop& desktop, Question askUser)
    : desktop_(std::make_shared<const Desktop>(desktop)), askUser_(std::move(askUser)) {}

bool LinuxAccessibility::isProcessTrusted() const {
    const AccessibilityBus& bus = desktop_->accessibility;
    // The first question first: an answer that came between the others would count as none, but no longer as awaited.
    return !bus.hasAnswered() || bus.isEnabled() || !bus.isNeeded() || desktop_->consent.hasAnswer();
}

void LinuxAccessibility::promptForTrust() {
    askUser_([desktop = desktop_](bool isAgreed) {
        desktop->consent.keep(isAgreed);
        if (isAgreed) desktop->accessibility.enable();
    });
}

AccessibilityElement LinuxAccessibility::applicationElement(ProcessID pid) const {
    return AccessibilityElement(std::make_shared<ApplicationElement>(desktop_, pid, nullptr));
}

std::optional<std::vector<AccessibilityElement>> LinuxAccessibility::applicationElementsToReadTogether(
    const std::vector<ProcessID>& pids) const {
    std::vector<StatusNotifierItem> items;
    for (const ProcessID pid : pids) std::ranges::move(desktop_->items.itemsOf(pid), std::back_inserter(items));
    const auto batch = std::make_shared<ItemPropertiesBatch>(desktop_->session, items);
    std::vector<AccessibilityElement> elements;
    for (const ProcessID pid : pids) {
        elements.push_back(AccessibilityElement(std::make_shared<ApplicationElement>(desktop_, pid, batch)));
    }
    return elements;
}

void LinuxAccessibility::setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const {
    LinuxElement::of(element).setTimeout(timeout);
}

AttributeAnswer LinuxAccessibility::copyAttributeValue(const AccessibilityElement& element,
                                                       std::string_view attribute) const {
    if (!isProcessTrusted()) return {AccessibilityError::apiDisabled, {}};
    return LinuxElement::of(element).read(attribute);
}

ProcessIDAnswer LinuxAccessibility::processIdentifier(const AccessibilityElement& element) const {
    return {AccessibilityError::success, LinuxElement::of(element).owner()};
}

bool LinuxAccessibility::isDrawnByProtocol(const AccessibilityElement& item) const {
    return desktop_->hasBar && !desktop_->accessibility.isNeeded() && LinuxElement::of(item).isDrawnByProtocol();
}

AccessibilityError LinuxAccessibility::performAction(const AccessibilityElement& element, std::string_view action) const {
    if (!isProcessTrusted()) return AccessibilityError::apiDisabled;
    return LinuxElement::of(element).perform(action);
}

AccessibilityError accessibilityError(const std::string& busError) {
    if (busError == noReplyError) return AccessibilityError::cannotComplete;
    if (busError == "org.freedesktop.DBus.Error.UnknownMethod") return AccessibilityError::actionUnsupported;
    if (busError == "org.freedesktop.DBus.Error.ServiceUnknown" || busError == "org.freedesktop.DBus.Error.NameHasNoOwner" ||
        busError == "org.freedesktop.DBus.Error.UnknownObject") {
        return AccessibilityError::invalidElement;
    }
    return AccessibilityError::failure;
}

}  // namespace ovin
