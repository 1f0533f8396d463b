#include "desktop/status_item/ItemServer.h"

#include <signal.h>
#include <sys/epoll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <utility>

namespace ovin {
namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr std::uint64_t microsecondsPerMillisecond = 1000;
constexpr std::uint64_t timerAccuracy = 1000;  // µs; the default of sd-event is a quarter of a second

ItemServer& serverOf(void* context) { return *static_cast<ItemServer*>(context); }

int explain(const char* what, int error) {
    std::fprintf(stderr, "status-item: %s: %s\n", what, std::strerror(-error));
    return error;
}

}  // namespace

ItemServer::ItemServer(ItemOptions options)
    : options_(std::move(options)),
      menu_(options_.menuFault == MenuFault::Empty || options_.menuFault == MenuFault::Late ? std::vector<std::string>{}
                                                                                            : options_.menu,
            options_.menuFault == MenuFault::Late ? options_.menu : std::vector<std::string>{},
            [this](const std::string& label) { print("menu " + label, ""); }) {
    items_.reserve(options_.items);
    registrations_.reserve(options_.items);
    for (std::size_t item = 0; item < options_.items; ++item) {
        items_.emplace_back(options_, item + 1, [this, item](const std::string& line) { print(line, items_[item].path()); });
        itemByPath_.emplace(items_.back().path(), item);
        registrations_.push_back({this, item});
        awaited_.insert(item);
    }
}

int ItemServer::run() {
    if (connect() < 0 || listenToSignals() < 0 || listenToInput() < 0 || listenToWatcher() < 0) return 1;
    if (items_.empty()) allRegistered();
    return sd_event_loop(event_.get()) < 0 ? 1 : 0;
}

void ItemServer::print(const std::string& line, const std::string& path) const {
    const bool several = options_.items > 1 && !path.empty();
    std::printf("%s%s%s\n", line.c_str(), several ? " " : "", several ? path.c_str() : "");
    std::fflush(stdout);
}

int ItemServer::connect() {
    sd_event* event = nullptr;
    if (const int error = sd_event_new(&event); error < 0) return explain("no event loop", error);
    event_.reset(event);
    sd_bus* bus = nullptr;
    if (const int error = sd_bus_open_user(&bus); error < 0) return explain("no session bus", error);
    bus_.reset(bus);
    sd_bus_set_exit_on_disconnect(bus, 1);
    const auto onCall = [](sd_bus_message* call, void* context, sd_bus_error*) { return serverOf(context).take(call); };
    if (const int error = sd_bus_add_filter(bus, nullptr, onCall, this); error < 0) return explain("no filter", error);
    if (options_.registerBy == RegisterBy::WellKnown) {
        const int error = sd_bus_request_name(bus, wellKnownName().c_str(), 0);
        if (error < 0) return explain("the name is not to be had", error);
    }
    const int error = sd_bus_attach_event(bus, event, SD_EVENT_PRIORITY_NORMAL);
    return error < 0 ? explain("the bus cannot be waited for", error) : 0;
}

int ItemServer::listenToSignals() {
    const auto onTitle = [](sd_event_source*, const signalfd_siginfo*, void* context) {
        auto& server = serverOf(context);
        for (auto& item : server.items_) item.changeTitle(server.bus_.get(), item.title() + " changed");
        return 0;
    };
    const auto onMenu = [](sd_event_source*, const signalfd_siginfo*, void* context) {
        auto& server = serverOf(context);
        server.menu_.change(server.bus_.get(), "More");
        return 0;
    };
    int error = sd_event_add_signal(event_.get(), nullptr, SIGUSR1, onTitle, this);
    if (error >= 0) error = sd_event_add_signal(event_.get(), nullptr, SIGUSR2, onMenu, this);
    return error < 0 ? explain("signals cannot be waited for", error) : 0;
}

int ItemServer::listenToInput() {
    if (!options_.takesCommands) return 0;
    const auto onInput = [](sd_event_source*, int, std::uint32_t, void* context) {
        serverOf(context).takeInput();
        return 0;
    };
    const int error = sd_event_add_io(event_.get(), &input_, STDIN_FILENO, EPOLLIN, onInput, this);
    return error < 0 ? explain("the standard input cannot be waited for", error) : 0;
}

void ItemServer::takeInput() {
    std::array<char, 4096> buffer{};
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {  // nobody commands any more
        input_ = sd_event_source_disable_unref(input_);
        return;
    }
    commands_.append(buffer.data(), static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = commands_.find('\n')) != std::string::npos; commands_.erase(0, end + 1)) {
        obey(commands_.substr(0, end));
    }
}

void ItemServer::obey(const std::string& command) {
    std::istringstream words(command);
    std::string verb;
    std::size_t number = 0;
    std::string title;
    words >> verb >> number;
    std::getline(words.ignore(1), title);
    if (verb != "title" || number < 1 || number > items_.size()) {
        std::fprintf(stderr, "status-item: cannot obey \"%s\"\n", command.c_str());
        return;
    }
    items_[number - 1].changeTitle(bus_.get(), std::move(title));
}

/// Two ways lead to watcherAppeared, so that a watcher that appears between them is not missed.
int ItemServer::listenToWatcher() {
    const auto onOwnerChanged = [](sd_bus_message* message, void* context, sd_bus_error*) {
        const char* owner = nullptr;
        if (sd_bus_message_skip(message, "ss") >= 0 && sd_bus_message_read_basic(message, 's', &owner) > 0)
            serverOf(context).watcherAppeared(owner);
        return 0;
    };
    const auto onOwner = [](sd_bus_message* reply, void* context, sd_bus_error*) {
        const char* owner = nullptr;
        if (sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read_basic(reply, 's', &owner) > 0)
            serverOf(context).watcherAppeared(owner);
        return 0;
    };
    const std::string rule =
        std::string("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='") + watcherName + "'";
    int error = sd_bus_add_match_async(bus_.get(), nullptr, rule.c_str(), onOwnerChanged, nullptr, this);
    if (error >= 0)
        error = sd_bus_call_method_async(bus_.get(), nullptr, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                         "org.freedesktop.DBus", "GetNameOwner", onOwner, this, "s", watcherName);
    return error < 0 ? explain("the bus cannot be asked for a watcher", error) : 0;
}

std::string ItemServer::wellKnownName() const { return options_.interface + "-" + std::to_string(getpid()) + "-1"; }

int ItemServer::take(sd_bus_message* call) {
    if (sd_bus_message_is_method_call(call, nullptr, nullptr) == 0) return 0;
    if (options_.stopAnswering) return 1;
    if (options_.answerAfterMilliseconds > 0) return hold(call);
    return dispatch(call);
}

/// 0: not about an item; the library answers.
int ItemServer::dispatch(sd_bus_message* call) {
    const char* path = sd_bus_message_get_path(call);
    if (vanished_ || path == nullptr || sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Peer", nullptr) > 0)
        return 0;
    int result = 0;
    if (const auto found = itemByPath_.find(path); found != itemByPath_.end()) {
        result = items_[found->second].answer(call);
    } else if (!options_.menu.empty() && options_.menuFault != MenuFault::Missing &&
               std::strcmp(path, MenuObject::path) == 0) {
        if (options_.menuFault == MenuFault::Silent) return 1;
        result = menu_.answer(call);
    } else {
        return 0;
    }
    if (result < 0) sd_bus_reply_method_errno(call, result, nullptr);
    return 1;
}

template <typename Expired>
ItemServer::Timer ItemServer::startTimer(std::uint64_t microseconds, Expired expired) {
    sd_event_source* source = nullptr;
    const int error =
        sd_event_add_time_relative(event_.get(), &source, CLOCK_MONOTONIC, microseconds, timerAccuracy, expired, this);
    if (error < 0) explain("no timer", error);
    return Timer(source);
}

int ItemServer::hold(sd_bus_message* call) {
    const std::uint64_t delay = options_.answerAfterMilliseconds * microsecondsPerMillisecond;
    std::uint64_t now = 0;
    sd_event_now(event_.get(), CLOCK_MONOTONIC, &now);
    held_.push_back({now + delay, Message(sd_bus_message_ref(call))});
    if (held_.size() > 1) return 1;  // the timer runs for an earlier call, which is due first
    heldTimer_ = startTimer(delay, [](sd_event_source*, std::uint64_t, void* context) {
        std::uint64_t reached = 0;
        sd_event_now(serverOf(context).event_.get(), CLOCK_MONOTONIC, &reached);
        serverOf(context).answerHeld(reached);
        return 0;
    });
    return 1;
}

void ItemServer::answerHeld(std::uint64_t now) {
    while (!held_.empty() && held_.front().due <= now) {
        const Message call = std::move(held_.front().call);
        held_.pop_front();
        // The library answers only at arrival, so this answers held calls that are not an item's.
        if (dispatch(call.get()) == 0)
            sd_bus_reply_method_errorf(call.get(), SD_BUS_ERROR_UNKNOWN_METHOD, "Nothing answers this here");
    }
    if (held_.empty()) return;
    sd_event_source_set_time(heldTimer_.get(), held_.front().due);
    sd_event_source_set_enabled(heldTimer_.get(), SD_EVENT_ONESHOT);
}

void ItemServer::watcherAppeared(const std::string& owner) {
    if (owner == watcher_ || vanished_) return;
    watcher_ = owner;
    if (owner.empty()) return;
    for (std::size_t item = 0; item < items_.size(); ++item) {
        registerItem(item);
        if (options_.registerTwice) registerItem(item);
    }
}

void ItemServer::registerItem(std::size_t item) {
    const auto onReply = [](sd_bus_message* reply, void* context, sd_bus_error*) {
        const auto& registration = *static_cast<Registration*>(context);
        registration.server->registered(registration.item, sd_bus_message_get_error(reply));
        return 0;
    };
    const int error =
        sd_bus_call_method_async(bus_.get(), nullptr, watcherName, watcherPath, watcherName, "RegisterStatusNotifierItem",
                                 onReply, &registrations_[item], "s", registrationArgument(items_[item]).c_str());
    if (error < 0) explain("an item cannot be registered", error);
}

std::string ItemServer::registrationArgument(const ItemObject& item) const {
    const char* uniqueName = "";
    sd_bus_get_unique_name(bus_.get(), &uniqueName);
    switch (options_.registerBy) {
        case RegisterBy::Name:
            return uniqueName;
        case RegisterBy::Both:
            return uniqueName + item.path();
        case RegisterBy::WellKnown:
            return wellKnownName();
        case RegisterBy::Path:
            break;
    }
    return item.path();
}

void ItemServer::registered(std::size_t item, const sd_bus_error* error) {
    if (error != nullptr) return print(std::string("refused ") + error->name, items_[item].path());
    print("registered", items_[item].path());
    awaited_.erase(item);
    if (awaited_.empty() && !std::exchange(ready_, true)) allRegistered();
}

void ItemServer::allRegistered() {
    if (options_.readyDescriptor >= 0) {
        // If this fails, the caller has gone, which is no reason to stop being an item.
        if (write(options_.readyDescriptor, "r", 1) < 0) explain("nobody waits for readiness", -errno);
        close(options_.readyDescriptor);
    }
    if (!options_.vanishAfterMilliseconds) return;
    const auto onVanish = [](sd_event_source*, std::uint64_t, void* context) {
        serverOf(context).vanish();
        return 0;
    };
    vanishTimer_ = startTimer(*options_.vanishAfterMilliseconds * microsecondsPerMillisecond, onVanish);
}

void ItemServer::vanish() {
    vanished_ = true;
    if (options_.registerBy == RegisterBy::WellKnown) sd_bus_release_name(bus_.get(), wellKnownName().c_str());
    print("vanished", "");
    if (!options_.keepConnection) sd_event_exit(event_.get(), 0);
}

}  // namespace ovin
