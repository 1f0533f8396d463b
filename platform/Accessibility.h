#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Geometry.h"
#include "platform/ProcessInfo.h"

namespace ovin {

/// Outcomes of Accessibility requests, with the numbers of the macOS interface (`AXError`). Other numbers may occur.
enum class AccessibilityError : std::int32_t {
    success = 0,
    failure = -25200,
    illegalArgument = -25201,
    /// The element is gone: its process ended, or the interface that it stood for was taken down.
    invalidElement = -25202,
    /// The owning process did not answer within the element's messaging timeout, or could not be reached.
    cannotComplete = -25204,
    attributeUnsupported = -25205,
    actionUnsupported = -25206,
    notImplemented = -25208,
    /// This program may not use the Accessibility interface.
    apiDisabled = -25211,
    noValue = -25212,
};

/// A handle to an interface element of some process. Copies share one *reference*; the reference keeps alive what the world
/// needs to name the element, but not the element, which dies with its process.
///
/// Two references may stand for the same element: they are equal and have the same hash, but each has its own messaging
/// timeout. Elements may be copied, compared and dropped on any thread.
class AccessibilityElement {
public:
    /// What a world keeps behind a reference.
    class Reference {
    public:
        Reference() = default;
        Reference(const Reference&) = delete;
        Reference& operator=(const Reference&) = delete;
        virtual ~Reference() = default;

        /// Whether `other`, a reference of the same world, stands for the same element. Never sends a request.
        [[nodiscard]] virtual bool isEqual(const Reference& other) const = 0;

        /// The same for equal references for as long as the element lives. Never sends a request.
        [[nodiscard]] virtual std::uint64_t hash() const = 0;
    };

    /// `reference` is never null.
    explicit AccessibilityElement(std::shared_ptr<Reference> reference) : reference_(std::move(reference)) {}

    [[nodiscard]] std::uint64_t hash() const { return reference_->hash(); }
    [[nodiscard]] Reference& reference() const { return *reference_; }

    friend bool operator==(const AccessibilityElement& a, const AccessibilityElement& b) {
        return a.reference_ == b.reference_ || a.reference_->isEqual(*b.reference_);
    }

private:
    std::shared_ptr<Reference> reference_;
};

/// The value of an attribute, as loosely typed as the interface delivers it.
struct AttributeValue {
    /// A request can succeed and still deliver nothing.
    struct Null {
        friend bool operator==(Null, Null) = default;
    };
    /// A value of a type that this program never reads (a number, a range, a colour ...).
    struct Other {
        friend bool operator==(Other, Other) = default;
    };
    /// Members may be of different types.
    using Array = std::vector<AttributeValue>;

    /// Strings are UTF-8 and may hold anything, NUL included.
    std::variant<Null, std::string, Point, Size, AccessibilityElement, Array, Other> content;

    friend bool operator==(const AttributeValue&, const AttributeValue&) = default;
};

/// The answer to an attribute read. `value` means something only when `error` is `success`.
struct AttributeAnswer {
    AccessibilityError error = AccessibilityError::failure;
    AttributeValue value;
};

/// The owner of an element. `pid` means something only when `error` is `success`.
struct ProcessIDAnswer {
    AccessibilityError error = AccessibilityError::failure;
    ProcessID pid = 0;
};

/// The Accessibility interface of the system: the only way to other applications' status items.
///
/// Every method may be called on any thread and on several at once. Requests (`copyAttributeValue`, `performAction`) block
/// the calling thread until the owning process has answered, or for at most the messaging timeout of the element that they
/// are sent to; a process that does not answer delays only the callers that wait for it. Which elements a process has may be
/// answered by the system itself without asking the process; what an element says about itself always comes from the
/// process. No caller can notice any caching of answers between requests. Failures are values; nothing throws.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    /// Whether the user lets this program use the interface, as the system told it last. Never blocks, because every user
    /// action begins with this check. Without trust every request answers `apiDisabled` at once.
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    /// Has the system ask the user for trust, in the system's words, and returns at once. Main thread only. A later
    /// `isProcessTrusted` tells the answer.
    virtual void promptForTrust() = 0;

    /// The root element of a process. Never fails and never asks the process: for a pid that no process has, later requests
    /// fail.
    [[nodiscard]] virtual AccessibilityElement applicationElement(ProcessID pid) const = 0;

    /// The same for processes whose items a caller reads next, one after the other on one thread; nothing where each process
    /// needs a thread of its own to be asked at once. The first reading of an item's text asks all items for theirs, so
    /// processes that do not answer cost one messaging timeout, however many they are. What is read first of an item may be
    /// as old as that reading. Any thread.
    [[nodiscard]] virtual std::optional<std::vector<AccessibilityElement>> applicationElementsToReadTogether(
        const std::vector<ProcessID>& /*pids*/) const {
        return std::nullopt;
    }

    /// Bounds each later request that is sent to this very reference. A reference that a request delivers starts with the
    /// timeout of the reference that the request was sent to; the root element of a process starts with the system's own
    /// timeout, which may be seconds long. `timeout` is positive.
    virtual void setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const = 0;

    /// Reads one attribute, for example "AXTitle". The attributes that this program reads are "AXWindows", "AXChildren",
    /// "AXExtrasMenuBar" (elements), "AXPosition", "AXSize" (the element's frame), "AXTitle", "AXDescription",
    /// "AXIdentifier" and "AXRole" (strings).
    [[nodiscard]] virtual AttributeAnswer copyAttributeValue(const AccessibilityElement& element,
                                                             std::string_view attribute) const = 0;

    /// The process that owns an element. Known from the reference; no request is sent.
    [[nodiscard]] virtual ProcessIDAnswer processIdentifier(const AccessibilityElement& element) const = 0;

    /// Whether the bar is known to draw the status item that an element stands for although the bar's layout cannot be read:
    /// by what the item told of itself when it was read last. No request is sent.
    [[nodiscard]] virtual bool isDrawnByProtocol(const AccessibilityElement& /*item*/) const { return false; }

    /// Calls `handler` on the main thread whenever a bar has come or gone, or what it is told to hide has changed, for as
    /// long as this object lives. Main thread only.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a world that heeds it keeps it
    virtual void observeBar(std::function<void()> /*handler*/) {}

    /// Performs one action, "AXPress" or "AXShowMenu". `cannotComplete` usually means that the process opened a menu and
    /// answers only when it closes.
    [[nodiscard]] virtual AccessibilityError performAction(const AccessibilityElement& element,
                                                           std::string_view action) const = 0;
};

}  // namespace ovin
