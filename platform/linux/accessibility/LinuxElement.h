#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include "platform/Accessibility.h"

namespace ovin {

/// A reference to an element of the Linux desktop: a process, its extras menu bar, a status item or an accessible object.
/// Two references with the same key stand for the same element.
class LinuxElement : public AccessibilityElement::Reference {
public:
    using Duration = std::chrono::nanoseconds;

    LinuxElement(std::string key, ProcessID owner, Duration timeout)
        : key_(std::move(key)), owner_(owner), timeout_(timeout) {}

    [[nodiscard]] static LinuxElement& of(const AccessibilityElement& element) {
        return static_cast<LinuxElement&>(element.reference());
    }

    [[nodiscard]] bool isEqual(const Reference& other) const final {
        return static_cast<const LinuxElement&>(other).key_ == key_;
    }
    [[nodiscard]] std::uint64_t hash() const final { return std::hash<std::string>{}(key_); }

    [[nodiscard]] ProcessID owner() const { return owner_; }
    [[nodiscard]] Duration timeout() const { return timeout_; }
    void setTimeout(Duration timeout) { timeout_ = timeout; }

    // Requests to the element's owner: see `Accessibility`.
    [[nodiscard]] virtual AttributeAnswer read(std::string_view attribute) = 0;
    [[nodiscard]] virtual AccessibilityError perform(std::string_view) { return AccessibilityError::actionUnsupported; }
    /// See `Accessibility`.
    [[nodiscard]] virtual bool isDrawnByProtocol() { return false; }

protected:
    [[nodiscard]] static AttributeAnswer failed(AccessibilityError error) { return {error, {}}; }

    /// An empty text counts as no value.
    [[nodiscard]] static AttributeAnswer textAnswer(std::string text) {
        if (text.empty()) return failed(AccessibilityError::noValue);
        return {AccessibilityError::success, {std::move(text)}};
    }

private:
    const std::string key_;
    const ProcessID owner_;
    std::atomic<Duration> timeout_;
};

/// The Accessibility error for an error of the bus.
[[nodiscard]] AccessibilityError accessibilityError(const std::string& busError);

}  // namespace ovin
