#include "platform/linux/system/Bus.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <future>
#include <limits>
#include <utility>

#include "platform/linux/system/BusNames.h"
#include "platform/linux/system/GentleThread.h"

namespace ovin {
namespace {

constexpr const char* noConnection = "org.freedesktop.DBus.Error.Disconnected";
constexpr std::chrono::milliseconds graceTime{10};
constexpr const char* badCall = "org.freedesktop.DBus.Error.InvalidArgs";

std::uint64_t microseconds(Bus::Duration duration) {
    const auto count = std::chrono::ceil<std::chrono::microseconds>(duration).count();
    return count > 0 ? static_cast<std::uint64_t>(count) : 1;
}

struct AppendArgument {
    sd_bus_message* message;

    int operator()(const std::string& text) const { return sd_bus_message_append(message, "s", text.c_str()); }
    int operator()(std::int32_t number) const { return sd_bus_message_append(message, "i", number); }
    int operator()(std::uint32_t number) const { return sd_bus_message_append(message, "u", number); }
    int operator()(BusCall::Variant variant) const {
        return sd_bus_message_append(message, "v", "b", variant.value ? 1 : 0);
    }
};

struct ReleaseMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using OwnedMessage = std::unique_ptr<sd_bus_message, ReleaseMessage>;

/// Null when the call makes no valid message, for example because of an ill-formed name.
OwnedMessage messageOf(sd_bus* bus, const BusCall& call) {
    sd_bus_message* created = nullptr;
    if (sd_bus_message_new_method_call(bus, &created, call.destination.c_str(), call.path.c_str(), call.interface.c_str(),
                                       call.member.c_str()) < 0) {
        return nullptr;
    }
    OwnedMessage message(created);
    sd_bus_message_set_auto_start(message.get(), call.mayStart ? 1 : 0);
    for (const BusCall::Argument& argument : call.arguments) {
        if (std::visit(AppendArgument{message.get()}, argument) < 0) return nullptr;
    }
    return message;
}

BusReply replyOf(sd_bus_message* message) {
    if (sd_bus_message_is_method_error(message, nullptr) == 0) return {{}, busValues(message)};
    const sd_bus_error* error = sd_bus_message_get_error(message);
    return {error != nullptr && error->name != nullptr ? error->name : badCall, {}};
}

std::string text(const char* string) { return string != nullptr ? string : ""; }

int handleReply(sd_bus_message* message, void* handler, sd_bus_error*) {
    (*static_cast<Bus::ReplyHandler*>(handler))(replyOf(message));
    return 1;
}

/// What is watched, and who owns the sender's name. Used on the bus's thread only.
struct Watched {
    std::shared_ptr<std::string> owner;
    Bus::SignalHandler handler;
};

int handleSignal(sd_bus_message* message, void* context, sd_bus_error*) {
    const auto& watched = *static_cast<Watched*>(context);
    if (text(sd_bus_message_get_sender(message)) == *watched.owner)
        watched.handler({text(sd_bus_message_get_member(message)), busValues(message)});
    return 0;
}

std::string ownerRule(const std::string& name) {
    return "interface='" + std::string(busName) + "',member='NameOwnerChanged'" +
           (name.empty() ? "" : ",arg0='" + name + "'");
}

template <typename Handler>
void destroyHandler(void* handler) {
    delete static_cast<Handler*>(handler);
}

/// Leaves a slot and its handler to the connection, which destroys both at its end.
template <typename Handler>
void keepWithConnection(sd_bus_slot* slot) {
    sd_bus_slot_set_destroy_callback(slot, destroyHandler<Handler>);
    sd_bus_slot_set_floating(slot, 1);
    sd_bus_slot_unref(slot);
}

}  // namespace

/// Used by the bus's thread only, except for the wake-up.
struct Bus::Connection {
    Connection(sd_bus* aBus, int aWakeUp) : bus(aBus), wakeUp(aWakeUp) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        sd_bus_close_unref(bus);
        close(wakeUp);
    }

    void send(const BusCall& call, Duration timeout, ReplyHandler handler) const {
        const OwnedMessage message = messageOf(bus, call);
        if (!message) return handler({badCall, {}});
        auto owned = std::make_unique<ReplyHandler>(std::move(handler));
        sd_bus_slot* slot = nullptr;
        if (sd_bus_call_async(bus, &slot, message.get(), handleReply, owned.get(), microseconds(timeout)) < 0) {
            return (*owned)({noConnection, {}});
        }
        keepWithConnection<ReplyHandler>(slot);
        (void)owned.release();
    }

    void watch(const std::string& sender, const std::string& rule, SignalHandler handler) const {
        const auto owner = std::make_shared<std::string>(sender == busName ? sender : std::string());
        if (owner->empty()) follow(sender, owner);
        const std::string whole = "type='signal',sender='" + sender + "'," + rule;
        auto owned = std::make_unique<Watched>(Watched{owner, std::move(handler)});
        sd_bus_slot* slot = nullptr;
        if (sd_bus_add_match(bus, &slot, whole.c_str(), handleSignal, owned.get()) < 0) return;
        keepWithConnection<Watched>(slot);
        (void)owned.release();
    }

    /// Keeps `owner` up to date. The owner is asked for before its signals are, so that the answer comes before them.
    void follow(const std::string& name, const std::shared_ptr<std::string>& owner) const {
        watch(busName, ownerRule(name), [owner](const BusSignal& changed) {
            if (changed.values.size() >= 3) *owner = changed.values[2].string();
        });
        send(busDaemonCall("GetNameOwner", {name}), untilAnswered,
             [owner](const BusReply& answer) { *owner = answer.first().string(); });
    }

    /// Sleeps until the bus or another thread has something to do.
    void wait() const {
        std::array descriptors{pollfd{sd_bus_get_fd(bus), 0, 0}, pollfd{wakeUp, POLLIN, 0}};
        const int events = sd_bus_get_events(bus);
        descriptors[0].events = static_cast<short>(events > 0 ? events : 0);
        if (events < 0) descriptors[0].fd = -1;

        timespec remaining{};
        ppoll(descriptors.data(), descriptors.size(), remainingTime(remaining), nullptr);
        std::uint64_t count = 0;
        if ((descriptors[1].revents & POLLIN) != 0 && read(wakeUp, &count, sizeof count) < 0) return;
    }

    sd_bus* const bus;
    const int wakeUp;

private:
    /// The time until the next call times out; null when no call is under way.
    timespec* remainingTime(timespec& remaining) const {
        std::uint64_t until = std::numeric_limits<std::uint64_t>::max();
        if (sd_bus_get_timeout(bus, &until) < 0 || until == std::numeric_limits<std::uint64_t>::max()) return nullptr;
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        const auto nowMicroseconds =
            static_cast<std::uint64_t>(now.tv_sec) * 1'000'000 + static_cast<std::uint64_t>(now.tv_nsec) / 1000;
        const std::uint64_t left = until > nowMicroseconds ? until - nowMicroseconds : 0;
        remaining = {static_cast<time_t>(left / 1'000'000), static_cast<long>(left % 1'000'000 * 1000)};
        return &remaining;
    }
};

std::unique_ptr<Bus> Bus::connect(const std::string& address) {
    sd_bus* bus = nullptr;
    if (address.empty()) {
        if (sd_bus_open_user(&bus) < 0) return nullptr;
    } else {
        const bool isOpen = sd_bus_new(&bus) >= 0 && sd_bus_set_address(bus, address.c_str()) >= 0 &&
                            sd_bus_set_bus_client(bus, 1) >= 0 && sd_bus_start(bus) >= 0;
        if (!isOpen) {
            sd_bus_unref(bus);
            return nullptr;
        }
    }
    const int wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wakeUp < 0) {
        sd_bus_close_unref(bus);
        return nullptr;
    }
    return std::unique_ptr<Bus>(new Bus(std::make_unique<Connection>(bus, wakeUp)));
}

Bus::Bus(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)), thread_([this](const std::stop_token& stop) { run(stop); }) {}

Bus::~Bus() {
    thread_.request_stop();
    post([] {});
    thread_.join();
}

void Bus::call(BusCall call, Duration timeout, ReplyHandler handler) {
    post([this, call = std::move(call), timeout, handler = std::move(handler)] {
        connection_->send(call, timeout, handler);
    });
}

BusReply Bus::callAndWait(BusCall call, Duration timeout) {
    const auto promise = std::make_shared<std::promise<BusReply>>();
    auto reply = promise->get_future();
    this->call(std::move(call), timeout, [promise](BusReply answer) { promise->set_value(std::move(answer)); });
    // Its own timeout, because the connection's clock stands still while it reads an overlong answer.
    if (reply.wait_for(timeout + graceTime) != std::future_status::ready) return {noReplyError, {}};
    return reply.get();
}

void Bus::watchOwner(const std::string& name, SignalHandler handler) { watch(busName, ownerRule(name), std::move(handler)); }

void Bus::watch(const std::string& sender, const std::string& rule, SignalHandler handler) {
    std::promise<void> added;
    post([&] {
        connection_->watch(sender, rule, std::move(handler));
        added.set_value();
    });
    added.get_future().wait();
}

void Bus::post(std::function<void()> work) {
    bool wasEmpty = false;
    {
        const std::lock_guard lock(mutex_);
        wasEmpty = posted_.empty();
        posted_.push_back(std::move(work));
    }
    // The counter cannot overflow, because nobody adds to it while work is waiting.
    const std::uint64_t one = 1;
    if (wasEmpty && write(connection_->wakeUp, &one, sizeof one) < 0) return;
}

void Bus::run(const std::stop_token& stop) {
    giveWay();
    while (!stop.stop_requested()) {
        std::vector<std::function<void()>> work;
        {
            const std::lock_guard lock(mutex_);
            work.swap(posted_);
        }
        for (const auto& step : work) step();
        // Negative once the bus is gone; then this only waits for calls of other threads, which fail.
        if (sd_bus_process(connection_->bus, nullptr) <= 0) connection_->wait();
    }
}

}  // namespace ovin
