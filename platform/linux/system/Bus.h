#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "platform/linux/system/BusValue.h"

namespace ovin {

/// A method call to another program.
struct BusCall {
    /// A Boolean argument that the method takes as a variant, as setting a property does.
    struct Variant {
        bool value;
    };
    using Argument = std::variant<std::string, std::int32_t, std::uint32_t, Variant>;

    std::string destination;
    std::string path;
    std::string interface;
    std::string member;
    std::vector<Argument> arguments;
    /// Whether the bus may start the program if it does not run; by default it must not.
    bool mayStart = false;
};

/// The answer to a call: what it returned, or the name of an error. Programs name their own errors; errors of this side have
/// the bus's names, such as "org.freedesktop.DBus.Error.NoReply" for an answer that did not come in time.
struct BusReply {
    std::string error;
    std::vector<BusValue> values;

    [[nodiscard]] bool isError() const { return !error.empty(); }

    /// The first value; an empty one when there is none.
    [[nodiscard]] BusValue first() const& { return values.empty() ? BusValue{} : values.front(); }
    [[nodiscard]] BusValue first() && { return values.empty() ? BusValue{} : std::move(values.front()); }
};

/// A signal.
struct BusSignal {
    std::string member;
    std::vector<BusValue> values;
};

/// A connection to a message bus. Calls may be made from any thread and any number may be under way at once: one thread of
/// the connection, which sleeps while nothing happens, sends them and receives the answers, so that a program that does not
/// answer delays only the callers that wait for it. That thread has a lower priority than the main thread.
class Bus {
public:
    using Duration = std::chrono::nanoseconds;
    /// A day, for what nobody asks again: the answer of a busy session counts however late it comes.
    static constexpr std::chrono::hours untilAnswered{24};
    /// Runs on the bus's thread and must not block.
    using ReplyHandler = std::function<void(BusReply)>;
    using SignalHandler = std::function<void(BusSignal)>;

    /// Connects to the bus at `address`, or to the user's session bus when that is empty. Null when there is no bus, or this
    /// process can open no more files.
    [[nodiscard]] static std::unique_ptr<Bus> connect(const std::string& address = {});

    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    /// Drops calls that are under way; their handlers are not run. Not on the bus's thread.
    ~Bus();

    /// Sends a call and runs `handler` once with the answer, or with an error after `timeout`.
    void call(BusCall call, Duration timeout, ReplyHandler handler);

    /// The same, but blocks until the answer. Not on the bus's thread.
    [[nodiscard]] BusReply callAndWait(BusCall call, Duration timeout);

    /// Runs `handler` for every signal of `sender` that matches `rule`, a match rule of the bus without type and sender,
    /// until the connection ends. `sender` is the bus's own name, or another well-known name; then its owner at the time
    /// counts. What others send is dropped, because the bus passes on whatever is addressed to this connection. Returns when
    /// the bus has begun to pass the signals on. Not on the bus's thread.
    void watch(const std::string& sender, const std::string& rule, SignalHandler handler);

    /// Runs `handler` whenever `name`, or any name if that is empty, changes hands: with the name, its old owner and its new
    /// one. Otherwise the same.
    void watchOwner(const std::string& name, SignalHandler handler);

private:
    struct Connection;

    explicit Bus(std::unique_ptr<Connection> connection);
    void post(std::function<void()> work);
    void run(const std::stop_token& stop);

    std::unique_ptr<Connection> connection_;
    std::mutex mutex_;
    std::vector<std::function<void()>> posted_;
    std::jthread thread_;
};

}  // namespace ovin
