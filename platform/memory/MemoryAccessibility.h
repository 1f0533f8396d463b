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
    /// How long the owner takes, besides the time that it takes for every request. Longer than the messaging timeout is too
    /// late.
    std::chrono::nanoseconds latency{0};
    bool neverAnswers = false;
};

/// One element of a process of the in-memory world. Copies stand for the same element. Any thread.
class MemoryElement {
public:
    using Answering = std::function<MemoryAnswer()>;

    /// Gives an attribute a value. Elements in it are delivered as new references at each read.
    void set(const std::string& attribute, AttributeValue value) const;
    void setChildren(const std::vector<MemoryElement>& children) const;
    void setFrame(const Rect& frame) const;
    /// Lets reads of an attribute, or an action ("AXPress", "AXShowMenu"), be answered as `answer` says. An element refuses
    /// attributes and actions that it was told nothing about.
    void answer(const std::string& request, MemoryAnswer answer) const;
    /// The same with an answer that is found afresh at each request, outside any lock.
    void answerWith(const std::string& request, Answering answering) const;
    /// Refuses a request with an error.
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
    /// Whether the timeout was set on this very reference, rather than inherited from the one that it was read from.
    bool wasGivenTimeout = false;
};

/// Processes and their trees of elements, with answers as scripted. Any thread, so that it serves real threads as well as
/// simulated time.
class MemoryAccessibility final : public Accessibility {
public:
    /// What elements have that nobody gave a messaging timeout.
    static constexpr std::chrono::nanoseconds systemTimeout = std::chrono::seconds(6);

    /// `wait` lets the time of a request pass for whoever sent it.
    explicit MemoryAccessibility(std::function<void(std::chrono::nanoseconds)> wait);
    ~MemoryAccessibility() override;

    // The processes of the world.

    /// Starts a process, in place of one that has the same pid, and returns its root element.
    MemoryElement launch(ProcessID pid);
    /// Ends a process: its elements become invalid, also should the pid be used again.
    void quit(ProcessID pid);
    /// A new element of a running process.
    [[nodiscard]] MemoryElement makeElement(ProcessID owner);
    /// Lets a process take this long for every request.
    void setLatency(ProcessID pid, std::chrono::nanoseconds latency);
    /// Lets a process stop answering, or answer again.
    void setHung(ProcessID pid, bool hung);
    /// Lets the process id of an element be unknown.
    void hideOwner(const MemoryElement& element);

    void setTrusted(bool trusted);
    /// How often the user was asked for trust.
    [[nodiscard]] int promptCount() const;
    /// Is told of every request, on the thread that sends it, before it is answered or refused.
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

private:
    using Node = MemoryElement::Node;
    using Process = MemoryElement::Process;
    using Reference = MemoryElement::Reference;

    /// Sends a request: lets its time pass, and delivers what the element's owner makes of it.
    MemoryAnswer request(MemoryRequest::Kind kind, const AccessibilityElement& element, std::string_view name) const;
    /// The node that a reference stands for now, and nothing when it is gone.
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
