// Stands in for the menu bar agent: owns its two names, takes registrations, and prints "item SENDER ARGUMENT" for each.
// Told so by STAND_IN_AGENT, it misbehaves: "crash" aborts at the start, "mute" owns no name, "refuse" takes no item.

#include <systemd/sd-bus.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::string behaviour() {
    const char* value = std::getenv("STAND_IN_AGENT");
    return value == nullptr ? "" : value;
}

int onRegister(sd_bus_message* call, void*, sd_bus_error*) {
    const char* argument = nullptr;
    if (const int error = sd_bus_message_read_basic(call, 's', &argument); error < 0) return error;
    std::printf("item %s %s\n", sd_bus_message_get_sender(call), argument);
    std::fflush(stdout);
    if (behaviour() == "refuse") return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_FAILED, "No items today");
    return sd_bus_reply_method_return(call, "");
}

int onCall(sd_bus_message* call, void* context, sd_bus_error* error) {
    if (sd_bus_message_is_method_call(call, "org.kde.StatusNotifierWatcher", "RegisterStatusNotifierItem") > 0)
        return onRegister(call, context, error);
    return 0;
}

int serve() {
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&bus) < 0 || sd_bus_add_object(bus, nullptr, "/StatusNotifierWatcher", onCall, nullptr) < 0)
        return 1;
    for (const char* name : {"org.kde.StatusNotifierWatcher", "org.ovin.MenuBarAgent"})
        if (sd_bus_request_name(bus, name, SD_BUS_NAME_QUEUE) < 0) return 1;  // a predecessor may be about to go
    for (int done = 0; done >= 0;) {
        done = sd_bus_process(bus, nullptr);
        if (done == 0) done = sd_bus_wait(bus, UINT64_MAX);
    }
    return 0;
}

}  // namespace

int main() {
    if (behaviour() == "crash") {
        std::fputs("the stand-in crashes as it was told\n", stderr);
        std::abort();
    }
    if (behaviour() == "mute") return pause();
    return serve();
}
