#include "platform/linux/accessibility/AccessibilityBus.h"

#include <atomic>
#include <future>
#include <utility>

#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

constexpr const char* service = "org.a11y.Bus";
constexpr const char* servicePath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";
constexpr const char* accessible = "org.a11y.atspi.Accessible";
/// The bar whose accessible objects tell which items they draw.
constexpr const char* readableBar = "org.ovin.MenuBarAgent";
constexpr std::chrono::milliseconds statusTimeout{500};

/// The role that AT-SPI gives to a main window.
constexpr std::int64_t frameRole = 23;
constexpr std::int64_t windowRole = 69;

using PendingReply = std::future<BusReply>;

PendingReply send(Bus& bus, BusCall call, Bus::Duration timeout) {
    const auto promise = std::make_shared<std::promise<BusReply>>();
    bus.call(std::move(call), timeout, [promise](BusReply reply) { promise->set_value(std::move(reply)); });
    return promise->get_future();
}

/// Makes the same call to every object at once, and waits for the answers.
template <typename MakeCall>
std::vector<BusReply> askAll(Bus& bus, const std::vector<AccessibleName>& objects, Bus::Duration timeout,
                             MakeCall makeCall) {
    std::vector<PendingReply> pending;
    pending.reserve(objects.size());
    for (const AccessibleName& object : objects) pending.push_back(send(bus, makeCall(object), timeout));
    std::vector<BusReply> replies;
    replies.reserve(objects.size());
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (PendingReply& reply : pending) {
        const bool hasCome = reply.wait_until(deadline) == std::future_status::ready;
        replies.push_back(hasCome ? reply.get() : BusReply{noReplyError, {}});
    }
    return replies;
}

std::vector<AccessibleName> childrenOf(Bus& bus, const AccessibleName& object, Bus::Duration timeout) {
    return accessibleNames(
        bus.callAndWait({object.destination, object.path, accessible, "GetChildren", {}}, timeout).first());
}

}  // namespace

struct AccessibilityBus::State : std::enable_shared_from_this<State> {
    std::atomic<bool> isEnabled = false;
    std::atomic<bool> wasSwitchedOff = false;
    std::atomic<bool> isNeeded = false;
    std::mutex mutex;
    std::function<void()> observer;

    /// Asks a question that is answered by a Boolean, and passes that on: false where there is no answer.
    std::future<void> ask(Bus& session, BusCall question, void (State::*answered)(bool)) {
        const auto hasAnswered = std::make_shared<std::promise<void>>();
        session.call(std::move(question), Bus::untilAnswered,
                     [self = shared_from_this(), hasAnswered, answered](const BusReply& reply) {
                         const BusValue value = reply.first();
                         const auto* isTrue = value.as<bool>();
                         (*self.*answered)(isTrue != nullptr && *isTrue);
                         hasAnswered->set_value();
                         self->tell();
                     });
        return hasAnswered->get_future();
    }

    /// Asks whether assistive programs are enabled.
    std::future<void> ask(Bus& session) {
        return ask(session, propertyCall(service, servicePath, statusInterface, "IsEnabled"), &State::setEnabled);
    }

    void setEnabled(bool enabled) {
        isEnabled = enabled;
        if (enabled) wasSwitchedOff = false;
    }
    void setNeeded(bool needed) { isNeeded = needed; }

    /// What the service says of a change.
    void changed(bool enabled) {
        if (isEnabled && !enabled) wasSwitchedOff = true;
        setEnabled(enabled);
        tell();
    }

    void tell() {
        const std::lock_guard lock(mutex);
        if (observer) observer();
    }
};

AccessibilityBus::AccessibilityBus(Bus& session) : session_(session), state_(std::make_shared<State>()) {
    session_.watch(service,
                   std::string("path='") + servicePath +
                       "',interface='org.freedesktop.DBus.Properties',member='PropertiesChanged',arg0='" + statusInterface +
                       "'",
                   [state = state_](const BusSignal& signal) {
                       if (signal.values.size() < 2) return;
                       const auto* changed = signal.values[1].as<BusValue::Dictionary>();
                       if (changed == nullptr) return;
                       const auto found = changed->find("IsEnabled");
                       const auto* value = found == changed->end() ? nullptr : found->second.as<bool>();
                       if (value != nullptr) state->changed(*value);
                   });
    // The service sends a signal only for changes, so it must be asked whenever it starts.
    session_.watchOwner(service, [&bus = session_, state = state_](const BusSignal&) { (void)state->ask(bus); });
    session_.watchOwner(readableBar, [state = state_](const BusSignal& signal) {
        if (signal.values.size() < 3) return;
        state->setNeeded(!signal.values[2].string().empty());
        state->tell();
    });
    firstBar_ = state_->ask(session_, busDaemonCall("NameHasOwner", {readableBar}), &State::setNeeded).share();
    firstAnswer_ = state_->ask(session_).share();
    (void)firstAnswer_.wait_for(statusTimeout);
}

bool AccessibilityBus::isEnabled() const { return state_->isEnabled; }

bool AccessibilityBus::isNeeded() const { return state_->isNeeded; }

bool AccessibilityBus::wasSwitchedOff() const { return state_->wasSwitchedOff; }

bool AccessibilityBus::waitForAnswer(Bus::Duration longest) const {
    const auto deadline = std::chrono::steady_clock::now() + longest;
    return firstBar_.wait_until(deadline) == std::future_status::ready &&
           firstAnswer_.wait_until(deadline) == std::future_status::ready;
}

void AccessibilityBus::observe(std::function<void()> handler) {
    const std::lock_guard lock(state_->mutex);
    state_->observer = std::move(handler);
}

void AccessibilityBus::enable() {
    session_.call({service,
                   servicePath,
                   "org.freedesktop.DBus.Properties",
                   "Set",
                   {statusInterface, "IsEnabled", BusCall::Variant{true}},
                   true},
                  Bus::untilAnswered, [&bus = session_, state = state_](const BusReply&) { (void)state->ask(bus); });
}

Bus* AccessibilityBus::bus() const {
    const std::lock_guard lock(mutex_);
    if (!bus_) {
        const BusReply reply = session_.callAndWait({service, servicePath, service, "GetAddress", {}, true}, statusTimeout);
        // With an empty address, `connect` would take the session bus.
        const std::string address = reply.first().string();
        if (!address.empty()) bus_ = Bus::connect(address);
    }
    return bus_.get();
}

std::vector<AccessibleName> AccessibilityBus::windowsOf(ProcessID pid, Bus::Duration timeout) const {
    Bus* const accessibilityBus = bus();
    if (accessibilityBus == nullptr) return {};
    const auto programs =
        childrenOf(*accessibilityBus, {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}, timeout);
    const auto pids = askAll(*accessibilityBus, programs, timeout, [](const AccessibleName& program) {
        return busDaemonCall("GetConnectionUnixProcessID", {program.destination});
    });

    std::vector<AccessibleName> windows;
    for (std::size_t i = 0; i < programs.size(); ++i) {
        if (pids[i].first().integer(-1) != pid) continue;
        const auto children = childrenOf(*accessibilityBus, programs[i], timeout);
        const auto roles = askAll(*accessibilityBus, children, timeout, [](const AccessibleName& child) {
            return BusCall{child.destination, child.path, accessible, "GetRole", {}};
        });
        for (std::size_t j = 0; j < children.size(); ++j) {
            const std::int64_t role = roles[j].first().integer();
            if (role == frameRole || role == windowRole) windows.push_back(children[j]);
        }
    }
    return windows;
}

}  // namespace ovin
