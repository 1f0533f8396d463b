#include "platform/memory/MemoryAccessibility.h"

#include <atomic>
#include <cassert>
#include <optional>
#include <utility>

namespace ovin {
namespace {

constexpr std::uint64_t mixedIntoRootHashes = 0x100000000;

/// All other names are attributes.
bool isActionName(std::string_view name) { return name == "AXPress" || name == "AXShowMenu"; }

}  // namespace

struct MemoryElement::Process {
    explicit Process(ProcessID id) : pid(id) {}

    const ProcessID pid;
    std::atomic<bool> isRunning = true;
    std::atomic<bool> isHung = false;
    std::atomic<std::chrono::nanoseconds> latency{std::chrono::nanoseconds(0)};
};

struct MemoryElement::Node {
    Node(std::shared_ptr<Process> process, std::uint64_t nodeNumber, bool isRootNode)
        : owner(std::move(process)), number(nodeNumber), isRoot(isRootNode) {}

    const std::shared_ptr<Process> owner;
    /// Nodes are numbered from 1, so that hashes are the same in every run.
    const std::uint64_t number;
    const bool isRoot;
    std::atomic<bool> isOwnerKnown = true;

    /// How to answer a request; empty when the test has set no answer.
    Answering answering(std::string_view request) {
        const std::lock_guard lock(mutex);
        const auto found = answers.find(request);
        return found == answers.end() ? Answering{} : found->second;
    }

    std::mutex mutex;
    /// By attribute or action.
    std::map<std::string, Answering, std::less<>> answers;
};

class MemoryElement::Reference final : public AccessibilityElement::Reference {
public:
    Reference(std::shared_ptr<Node> aNode, std::chrono::nanoseconds aTimeout) : node(std::move(aNode)), timeout(aTimeout) {}

    static Reference& of(const AccessibilityElement& element) { return static_cast<Reference&>(element.reference()); }

    /// Roots are equal when they have the same pid; other elements when they are the same node.
    [[nodiscard]] bool isEqual(const AccessibilityElement::Reference& other) const override {
        const Node& otherNode = *static_cast<const Reference&>(other).node;
        if (node->isRoot && otherNode.isRoot) return node->owner->pid == otherNode.owner->pid;
        return node.get() == &otherNode;
    }
    [[nodiscard]] std::uint64_t hash() const override {
        return node->isRoot ? mixedIntoRootHashes + static_cast<std::uint32_t>(node->owner->pid) : node->number;
    }

    const std::shared_ptr<Node> node;
    std::atomic<std::chrono::nanoseconds> timeout;
    std::atomic<bool> wasGivenTimeout = false;
};

namespace {

/// Copies a value as a read delivers it, with each element in it replaced by `deliver`.
template <typename Deliver>
AttributeValue delivered(const AttributeValue& value, const Deliver& deliver) {
    if (const auto* element = std::get_if<AccessibilityElement>(&value.content)) return {deliver(*element)};
    const auto* array = std::get_if<AttributeValue::Array>(&value.content);
    if (array == nullptr) return value;
    AttributeValue::Array members;
    members.reserve(array->size());
    for (const AttributeValue& member : *array) members.push_back(delivered(member, deliver));
    return {std::move(members)};
}

}  // namespace

void MemoryElement::set(const std::string& attribute, AttributeValue value) const { answer(attribute, {std::move(value)}); }

void MemoryElement::setChildren(const std::vector<MemoryElement>& children) const {
    AttributeValue::Array array;
    array.reserve(children.size());
    for (const MemoryElement& child : children) array.push_back({child.element()});
    set("AXChildren", {std::move(array)});
}

void MemoryElement::setFrame(const Rect& frame) const {
    set("AXPosition", {frame.origin});
    set("AXSize", {frame.size});
}

void MemoryElement::answer(const std::string& request, MemoryAnswer answer) const {
    answerWith(request, [shared = std::make_shared<const MemoryAnswer>(std::move(answer))] { return *shared; });
}

void MemoryElement::answerWith(const std::string& request, Answering answering) const {
    const std::lock_guard lock(node_->mutex);
    node_->answers.insert_or_assign(request, std::move(answering));
}

void MemoryElement::fail(const std::string& request, AccessibilityError error) const { answer(request, {{}, error}); }

AccessibilityElement MemoryElement::element() const {
    return AccessibilityElement(std::make_shared<Reference>(node_, MemoryAccessibility::systemTimeout));
}

ProcessID MemoryElement::owner() const { return node_->owner->pid; }

MemoryAccessibility::MemoryAccessibility(std::function<void(std::chrono::nanoseconds)> wait) : wait_(std::move(wait)) {}

// Breaks cycles of elements, which would keep each other alive for ever.
MemoryAccessibility::~MemoryAccessibility() {
    for (const auto& weakNode : nodes_) {
        const auto node = weakNode.lock();
        if (!node) continue;
        const std::lock_guard lock(node->mutex);
        node->answers.clear();
    }
}

MemoryElement MemoryAccessibility::launch(ProcessID pid) {
    quit(pid);
    const std::lock_guard lock(mutex_);
    auto root = makeNode(std::make_shared<Process>(pid), true);
    roots_[pid] = root;
    return MemoryElement(std::move(root));
}

void MemoryAccessibility::quit(ProcessID pid) {
    const std::lock_guard lock(mutex_);
    const auto root = roots_.find(pid);
    if (root == roots_.end()) return;
    root->second->owner->isRunning = false;
    roots_.erase(root);
}

MemoryElement MemoryAccessibility::makeElement(ProcessID owner) {
    auto ownerProcess = process(owner);
    assert(ownerProcess != nullptr);
    const std::lock_guard lock(mutex_);
    return MemoryElement(makeNode(std::move(ownerProcess), false));
}

void MemoryAccessibility::setLatency(ProcessID pid, std::chrono::nanoseconds latency) {
    const auto running = process(pid);
    assert(running != nullptr);
    running->latency = latency;
}

void MemoryAccessibility::setHung(ProcessID pid, bool hung) {
    const auto running = process(pid);
    assert(running != nullptr);
    running->isHung = hung;
}

void MemoryAccessibility::hideOwner(const MemoryElement& element) { element.node_->isOwnerKnown = false; }

void MemoryAccessibility::setTrusted(bool trusted) {
    const std::lock_guard lock(mutex_);
    trusted_ = trusted;
}

int MemoryAccessibility::promptCount() const {
    const std::lock_guard lock(mutex_);
    return promptCount_;
}

void MemoryAccessibility::observeRequests(std::function<void(const MemoryRequest&)> observer) {
    const std::lock_guard lock(mutex_);
    observer_ = std::move(observer);
}

bool MemoryAccessibility::isProcessTrusted() const {
    const std::lock_guard lock(mutex_);
    return trusted_;
}

void MemoryAccessibility::promptForTrust() {
    const std::lock_guard lock(mutex_);
    ++promptCount_;
}

AccessibilityElement MemoryAccessibility::applicationElement(ProcessID pid) const {
    auto node = std::make_shared<Node>(std::make_shared<Process>(pid), 0, true);
    return AccessibilityElement(std::make_shared<Reference>(std::move(node), systemTimeout));
}

void MemoryAccessibility::setMessagingTimeout(const AccessibilityElement& element, std::chrono::nanoseconds timeout) const {
    Reference& reference = Reference::of(element);
    reference.timeout = timeout;
    reference.wasGivenTimeout = true;
}

AttributeAnswer MemoryAccessibility::copyAttributeValue(const AccessibilityElement& element,
                                                        std::string_view attribute) const {
    MemoryAnswer answer = request(MemoryRequest::Kind::read, element, attribute);
    const std::chrono::nanoseconds timeout = Reference::of(element).timeout;
    const auto deliver = [&](const AccessibilityElement& member) {
        return AccessibilityElement(std::make_shared<Reference>(Reference::of(member).node, timeout));
    };
    return {answer.error, delivered(answer.value, deliver)};
}

ProcessIDAnswer MemoryAccessibility::processIdentifier(const AccessibilityElement& element) const {
    const Node& node = *Reference::of(element).node;
    if (!node.isOwnerKnown) return {AccessibilityError::failure, 0};
    return {AccessibilityError::success, node.owner->pid};
}

AccessibilityError MemoryAccessibility::performAction(const AccessibilityElement& element, std::string_view action) const {
    return request(MemoryRequest::Kind::action, element, action).error;
}

MemoryAnswer MemoryAccessibility::request(MemoryRequest::Kind kind, const AccessibilityElement& element,
                                          std::string_view name) const {
    const Reference& reference = Reference::of(element);
    const std::chrono::nanoseconds timeout = reference.timeout;
    const auto node = liveNode(reference);

    std::function<void(const MemoryRequest&)> observer;
    {
        const std::lock_guard lock(mutex_);
        observer = observer_;
    }
    if (observer) {
        observer({kind, MemoryElement(node ? node : reference.node), std::string(name), timeout, reference.wasGivenTimeout});
    }
    if (!isProcessTrusted()) return {{}, AccessibilityError::apiDisabled};
    if (!node) return {{}, AccessibilityError::invalidElement};

    const bool isRead = kind == MemoryRequest::Kind::read;
    MemoryElement::Answering answering;
    // Reading an attribute that has the name of an action does not perform the action.
    if (isRead != isActionName(name)) answering = node->answering(name);
    MemoryAnswer answer{{}, isRead ? AccessibilityError::attributeUnsupported : AccessibilityError::actionUnsupported};
    if (answering) answer = answering();

    const auto latency = node->owner->latency.load() + answer.latency;
    const bool isLate = node->owner->isHung || answer.neverAnswers || latency > timeout;
    wait_(isLate ? timeout : latency);
    if (isLate) return {{}, AccessibilityError::cannotComplete};
    if (!node->owner->isRunning) return {{}, AccessibilityError::invalidElement};
    return answer;
}

std::shared_ptr<MemoryElement::Node> MemoryAccessibility::liveNode(const Reference& reference) const {
    if (!reference.node->isRoot) return reference.node->owner->isRunning ? reference.node : nullptr;
    const std::lock_guard lock(mutex_);
    const auto root = roots_.find(reference.node->owner->pid);
    return root == roots_.end() ? nullptr : root->second;
}

std::shared_ptr<MemoryElement::Process> MemoryAccessibility::process(ProcessID pid) const {
    const std::lock_guard lock(mutex_);
    const auto root = roots_.find(pid);
    return root == roots_.end() ? nullptr : root->second->owner;
}

std::shared_ptr<MemoryElement::Node> MemoryAccessibility::makeNode(std::shared_ptr<Process> owner, bool isRoot) {
    auto node = std::make_shared<Node>(std::move(owner), nodes_.size() + 1, isRoot);
    nodes_.push_back(node);
    return node;
}

}  // namespace ovin
