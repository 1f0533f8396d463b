#include "platform/linux/accessibility/AccessibilityBus.h"

#include <algorithm>
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
/// Long, because an answer counts even when nobody waits for it any more.
constexpr std::chrono::seconds patience{25};

/// The role that AT-SPI gives to a main window.
constexpr std::int64_t frameRole = 23;
constexpr std::int64_t windowRole = 69;

using PendingReply = std::future<BusReply>;

PendingReply send(Bus& bus, BusCall call, Bus::Duration timeout) {
    const auto promise = std::make_shared<std::promise<BusReply>>();
    bus.call(std::move(call), timeout, [promise](BusReply reply) { promise->set_value(std::move(reply)); });
    return promise->get_future();
}

/// Asks whether assistive programs are enabled, and keeps the answer.
std::future<void> ask(Bus& session, const std::shared_ptr<std::atomic<bool>>& enabled) {
    const auto hasAnswered = std::make_shared<std::promise<void>>();
    session.call(propertyCall(service, servicePath, statusInterface, "IsEnabled"), patience,
                 [enabled, hasAnswered](const BusReply& reply) {
                     const BusValue value = reply.first();
                     const auto* isEnabled = value.as<bool>();
                     *enabled = isEnabled != nullptr && *isEnabled;
                     hasAnswered->set_value();
                 });
    return hasAnswered->get_future();
}

/// Asks whether a bar runs whose layout can be read, and keeps the answer.
std::future<void> askForBar(Bus& session, const std::shared_ptr<std::atomic<bool>>& needed) {
    const auto hasAnswered = std::make_shared<std::promise<void>>();
    session.call(busDaemonCall("NameHasOwner", {readableBar}), patience, [needed, hasAnswered](const BusReply& reply) {
        const BusValue value = reply.first();
        const auto* hasOwner = value.as<bool>();
        *needed = hasOwner != nullptr && *hasOwner;
        hasAnswered->set_value();
    });
    return hasAnswered->get_future();
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

AccessibilityBus::AccessibilityBus(Bus& session) : session_(session) {
    session_.watch(std::string("type='signal',sender='") + service + "',path='" + servicePath +
                       "',interface='org.freedesktop.DBus.Properties',member='PropertiesChanged',arg0='" + statusInterface +
                       "'",
                   [enabled = enabled_](const BusSignal& signal) {
                       if (signal.values.size() < 2) return;
                       const auto* changed = signal.values[1].as<BusValue::Dictionary>();
                       if (changed == nullptr) return;
                       const auto found = changed->find("IsEnabled");
                       const auto* value = found == changed->end() ? nullptr : found->second.as<bool>();
                       if (value != nullptr) *enabled = *value;
                   });
    // The service sends a signal only for changes, so it must be asked whenever it starts.
    session_.watch(nameOwnerRule(service),
                   [&bus = session_, enabled = enabled_](const BusSignal&) { (void)ask(bus, enabled); });
    session_.watch(nameOwnerRule(readableBar), [needed = needed_](const BusSignal& signal) {
        if (signal.values.size() >= 3) *needed = !signal.values[2].string().empty();
    });
    firstBar_ = askForBar(session_, needed_).share();
    firstAnswer_ = ask(session_, enabled_).share();
    (void)firstAnswer_.wait_for(statusTimeout);
}

void AccessibilityBus::waitForAnswer() const {
    (void)firstBar_.wait_for(patience);
    (void)firstAnswer_.wait_for(patience);
}

bool AccessibilityBus::enable() {
    const BusReply reply = session_.callAndWait({service,
                                                 servicePath,
                                                 "org.freedesktop.DBus.Properties",
                                                 "Set",
                                                 {statusInterface, "IsEnabled", BusCall::Variant{true}},
                                                 true},
                                                statusTimeout);
    (void)ask(session_, enabled_).wait_for(statusTimeout);
    return !reply.isError() && isEnabled();
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
