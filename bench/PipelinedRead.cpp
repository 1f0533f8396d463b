#include "bench/PipelinedRead.h"

#include <poll.h>
#include <systemd/sd-bus.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace ovin {
namespace {

constexpr const char* properties = "org.freedesktop.DBus.Properties";
constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr std::uint32_t frameRole = 23;
constexpr std::uint32_t windowRole = 69;

sd_bus* checked(int result, sd_bus* bus) {
    if (result >= 0) return bus;
    std::fputs("desktop_bench: a bus is missing\n", stderr);
    std::exit(1);
}

sd_bus* openAccessibilityBus(sd_bus* session) {
    sd_bus_message* reply = nullptr;
    sd_bus* bus = nullptr;
    const char* address = "";
    int result =
        sd_bus_call_method(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr, &reply, "");
    if (result >= 0) result = sd_bus_message_read(reply, "s", &address);
    if (result >= 0) result = sd_bus_new(&bus);
    if (result >= 0) result = sd_bus_set_address(bus, address);
    if (result >= 0) result = sd_bus_set_bus_client(bus, 1);
    if (result >= 0) result = sd_bus_start(bus);
    sd_bus_message_unref(reply);
    return checked(result, bus);
}

/// 0 when nobody owns the name.
unsigned processOf(sd_bus* bus, const char* name) {
    sd_bus_message* reply = nullptr;
    std::uint32_t pid = 0;
    if (sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "GetConnectionUnixProcessID", nullptr, &reply, "s", name) >= 0) {
        sd_bus_message_read(reply, "u", &pid);
    }
    sd_bus_message_unref(reply);
    return pid;
}

std::uint32_t number(sd_bus_message* message) {
    std::uint32_t value = 0;
    sd_bus_message_read(message, "u", &value);
    return value;
}

/// Handles what has come, and returns when there is nothing left to handle.
void process(sd_bus* bus) {
    while (bus != nullptr && sd_bus_process(bus, nullptr) > 0) {
    }
}

pollfd descriptorOf(sd_bus* bus) {
    if (bus == nullptr) return {-1, 0, 0};
    return {sd_bus_get_fd(bus), static_cast<short>(sd_bus_get_events(bus)), 0};
}

}  // namespace

struct PipelinedRead::Request {
    PipelinedRead* owner;
    Handler handler;

    static int answer(sd_bus_message* message, void* context, sd_bus_error*) {
        const std::unique_ptr<Request> request(static_cast<Request*>(context));
        --request->owner->outstanding_;
        if (sd_bus_message_is_method_error(message, nullptr) != 0) return 1;
        ++request->owner->answers_;
        if (request->handler) request->handler(message);
        return 1;
    }
};

PipelinedRead::PipelinedRead() {
    const int opened = sd_bus_open_user(&session_);
    checked(opened, session_);
    char** entries = nullptr;
    sd_bus_get_property_strv(session_, "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                             "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems", nullptr, &entries);
    for (char** entry = entries; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string address = *entry;
        const std::size_t slash = address.find('/');
        items_.push_back({address.substr(0, slash), address.substr(slash)});
        std::free(*entry);
    }
    std::free(entries);
    agentPID_ = processOf(session_, "org.ovin.MenuBarAgent");
    if (agentPID_ != 0) accessibility_ = openAccessibilityBus(session_);
}

PipelinedRead::~PipelinedRead() {
    sd_bus_close_unref(accessibility_);
    sd_bus_close_unref(session_);
}

void PipelinedRead::ask(sd_bus* bus, const Object& object, const char* interface, const char* member, Handler handler,
                        const std::vector<const char*>& texts) {
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_call(bus, &message, object.destination.c_str(), object.path.c_str(), interface, member);
    for (const char* text : texts) sd_bus_message_append(message, "s", text);
    if (member == std::string("GetExtents")) sd_bus_message_append(message, "u", 0);
    auto request = std::make_unique<Request>(Request{this, std::move(handler)});
    if (sd_bus_call_async(bus, nullptr, message, Request::answer, request.get(), 0) >= 0) {
        ++outstanding_;
        (void)request.release();
    }
    sd_bus_message_unref(message);
}

void PipelinedRead::askItems() {
    for (const Object& item : items_) ask(session_, item, properties, "GetAll", {}, {"org.kde.StatusNotifierItem"});
}

void PipelinedRead::askChildren(const Object& object, std::function<void(const Object&)> handleChild) {
    ask(accessibility_, object, accessible, "GetChildren", [handleChild = std::move(handleChild)](sd_bus_message* message) {
        const char* destination = nullptr;
        const char* path = nullptr;
        sd_bus_message_enter_container(message, 'a', "(so)");
        while (sd_bus_message_read(message, "(so)", &destination, &path) > 0) handleChild({destination, path});
    });
}

void PipelinedRead::askBar() {
    askChildren({"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"},
                [this](const Object& program) { askProgram(program); });
}

void PipelinedRead::askProgram(const Object& program) {
    const auto handle = [this, program](sd_bus_message* message) {
        if (number(message) != agentPID_) return;
        askChildren(program, [this](const Object& window) { askWindow(window); });
    };
    ask(accessibility_, {"org.freedesktop.DBus", "/org/freedesktop/DBus"}, "org.freedesktop.DBus",
        "GetConnectionUnixProcessID", handle, {program.destination.c_str()});
}

void PipelinedRead::askWindow(const Object& window) {
    ask(accessibility_, window, accessible, "GetRole", [this, window](sd_bus_message* message) {
        const std::uint32_t role = number(message);
        if (role == frameRole || role == windowRole) askChildren(window, [this](const Object& slot) { askSlot(slot); });
    });
}

void PipelinedRead::askSlot(const Object& slot) {
    ask(accessibility_, slot, "org.a11y.atspi.Component", "GetExtents", {});
    ask(accessibility_, slot, properties, "Get", {}, {accessible, "Description"});
}

std::size_t PipelinedRead::finish() {
    answers_ = 0;
    while (true) {
        process(session_);
        process(accessibility_);
        if (outstanding_ == 0) return answers_;
        pollfd descriptors[] = {descriptorOf(session_), descriptorOf(accessibility_)};
        poll(descriptors, std::size(descriptors), -1);
    }
}

}  // namespace ovin
