#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "desktop/status_item/ItemOptions.h"
#include "desktop/status_item/ItemServer.h"

namespace {

/// Gives the process a name of its own: in full as its first argument, and shortened by the kernel as its command. The first
/// argument can be set only by executing the program again.
void takeName(const std::string& name, char** arguments) {
    if (name != arguments[0]) {
        std::string first = name;
        arguments[0] = first.data();
        execv("/proc/self/exe", arguments);
        std::perror("status-item: its name cannot be set");
    }
    prctl(PR_SET_NAME, name.c_str());
}

/// The event loop takes these signals from a descriptor, so they must be blocked.
void blockEventSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGUSR1);
    sigaddset(&signals, SIGUSR2);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

int main(int argumentCount, char** arguments) {
    blockEventSignals();
    signal(SIGPIPE, SIG_IGN);  // an item lives on when nobody reads what it prints
    auto parsed = ovin::parseItemOptions(argumentCount, arguments);
    if (!parsed.options) return parsed.exitStatus;
    if (parsed.options->processName) takeName(*parsed.options->processName, arguments);
    return ovin::ItemServer(std::move(*parsed.options)).run();
}
