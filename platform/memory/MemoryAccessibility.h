#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessibility.h"

namespace ovin {

/// How an element of the in-memory world answers one request.
struct MemoryAnswer {
    AttributeValue value;
    AccessibilityError error = AccessibilityError::success;
    /// How long the owner takes, in addition to the latency of its process. Too late after the messaging timeout.
    std::chrono::nanoseconds latency{0};
    bool neverAnswers = false;
};

/// One element of a process of the in-memory world. Copies stand for the same element. Any thread.
class MemoryElement {
public:
    using Answering = std::function<MemoryAnswer()>;

    /// Gives an attribute a value. Each read delivers the elements in it as new references.
    void set(const std::string& attribute, AttributeValue value) const;
    void setChildren(const std::vector<MemoryElement>& children) const;
    void setFrame(const Rect& frame) const;
    /// Sets the answer to reads of an attribute, or to an action ("AXPress", "AXShowMenu"). An element refuses requests for
    /// which no answer is set.
    void answer(const std::string& request, MemoryAnswer answer) const;
    /// The same with `answering` called at each request, outside any lock.
    void answerWith(const std::string& request, Answering answering) const;
    /// Has a request answered with an error.
    void fail(const std::string& request, AccessibilityError error) const;

    /// A new reference to this element, with the system's own messaging timeout.
    [[nodiscard]] AccessibilityElement element() const;
    [[nodiscard]] ProcessID owner() const;

    friend bool operator==(const MemoryElement&, const MemoryElement&) = default;

private:
    friend class MemoryAccessibility;
    struct Process;
    struct Node;
    class Reference;

    explicit MemoryElement(std::shared_ptr<Node> node) : node_(std::move(node)) {}

    std::shared_ptr<Node> node_;
};

/// A request as the in-memory world received it.
struct MemoryRequest {
    enum class Kind { read, action };
    Kind kind = Kind::read;
    MemoryElement element;
    /// The attribute or the action.
    std::string name;
    /// The messaging timeout that bounds this request.
    std::chrono::nanoseconds timeout{0};
    /// Whether the timeout was set on this reference, not inherited from the one that it was read from.
    bool wasGivenTimeout = false;
};

/// Processes and their trees of elements, with scripted answers. Any thread, so that it works with real threads as well as
/// with simulated time.
class MemoryAccessibility final : public Accessibility {
public:
    /// The messaging timeout of references that were given none.
    static constexpr std::chrono::nanoseconds systemTimeout = std::chrono::seconds(6);

    /// `wait` lets the time of a request pass for the thread or task that sent it.
    explicit MemoryAccessibility(std::function<void(std::chrono::nanoseconds)> wait);
    ~MemoryAccessibility() override;

    // The processes of the world.

    /// Starts a process, in place of one that has the same pid, and returns its root element.
    MemoryElement launch(ProcessID pid);
    /// Ends a process: its elements become invalid, and stay so when the pid is used again.
    void quit(ProcessID pid);
    /// A new element of a running process.
    [[nodiscard]] MemoryElement makeElement(ProcessID owner);
    /// Makes a process take this long for every request.
    void setLatency(ProcessID pid, std::chrono::nanoseconds latency);
    /// Makes a process stop answering, or answer again.
    void setHung(ProcessID pid, bool hung);
    /// Makes `processIdentifier` fail for an element.
    void hideOwner(const MemoryElement& element);

    /// What `isDrawnByProtocol` answers. Not while a discovery runs.
    std::function<bool(const AccessibilityElement&)> drawnByProtocol;
    /// What `observeBar` was given last.
    std::function<void()> barChanged;

    void setTrusted(bool trusted);
    /// How often the user was asked for trust.
    [[nodiscard]] int promptCount() const;
    /// `observer` is called for every request, on the thread that sends it, before the request is answered or refused.
    void observeRequests(std::function<void(const MemoryRequest&)> observer);

    // Accessibility
    [[nodiscard]] bool isProcessTrusted() const override;
    void promptForTrust() override;
    [[nodiscard]] AccessibilityElement applicationElement(ProcessID pid) const override;
    void setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const override;
    [[nodiscard]] AttributeAnswer copyAttributeValue(const AccessibilityElement& element,
                                                     std::string_view attribute) const override;
    [[nodiscard]] ProcessIDAnswer processIdentifier(const AccessibilityElement& element) const override;
    [[nodiscard]] AccessibilityError performAction(const AccessibilityElement& element,
                                                   std::string_view action) const override;
    [[nodiscard]] bool isDrawnByProtocol(const AccessibilityElement& item) const override {
        return drawnByProtocol && drawnByProtocol(item);
    }
    void observeBar(std::function<void()> handler) override { barChanged = std::move(handler); }

private:
    using Node = MemoryElement::Node;
    using Process = MemoryElement::Process;
    using Reference = MemoryElement::Reference;

    /// Sends a request: lets its time pass, and returns the answer of the element's owner.
    MemoryAnswer request(MemoryRequest::Kind kind, const AccessibilityElement& element, std::string_view name) const;
    /// The node that a reference stands for now; null when it is gone.
    [[nodiscard]] std::shared_ptr<Node> liveNode(const Reference& reference) const;
    [[nodiscard]] std::shared_ptr<Process> process(ProcessID pid) const;
    std::shared_ptr<Node> makeNode(std::shared_ptr<Process> owner, bool isRoot);

    const std::function<void(std::chrono::nanoseconds)> wait_;
    mutable std::mutex mutex_;
    std::map<ProcessID, std::shared_ptr<Node>> roots_;
    std::vector<std::weak_ptr<Node>> nodes_;
    std::function<void(const MemoryRequest&)> observer_;
    bool trusted_ = true;
    int promptCount_ = 0;
};

}  // namespace ovin
