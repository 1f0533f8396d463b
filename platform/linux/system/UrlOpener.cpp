#include "platform/linux/system/UrlOpener.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/Workspace.h"
#include "platform/linux/system/Environment.h"

namespace ovin {
namespace {

constexpr const char* program = "xdg-open";

/// Variables that an AppImage sets for the program inside; other programs would not find their libraries with them.
constexpr std::array<std::string_view, 6> ofAppImage{
    "LD_LIBRARY_PATH=", "LD_PRELOAD=", "QT_PLUGIN_PATH=", "APPIMAGE=", "APPDIR=", "ARGV0="};

std::vector<char*> environmentForOthers() {
    const bool isInAppImage = environmentVariable("APPDIR").has_value();
    std::vector<char*> variables;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        const bool isOwn =
            std::any_of(ofAppImage.begin(), ofAppImage.end(), [&](auto own) { return text.starts_with(own); });
        if (!isInAppImage || !isOwn) variables.push_back(*variable);
    }
    variables.push_back(nullptr);
    return variables;
}

/// Starts the program, found in PATH as by a shell, in a session of its own, so that it outlives this one and its terminal.
/// It inherits the output, no other files, and the environment without what an AppImage has set for this program. Sets
/// `pid`, which somebody has to wait for. Returns 0 or the system's error number.
int start(std::string url, pid_t& pid) {
    std::string name = program;
    const std::array<char*, 3> words{name.data(), url.data(), nullptr};
    const std::vector<char*> environment = environmentForOthers();

    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);

    const int error = posix_spawnp(&pid, program, &actions, &attributes, words.data(), environment.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

/// Waits until the program has ended. Returns its status as `waitpid` has it: 0 when it succeeded, and also when its status
/// cannot be known.
int awaitEnd(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) return 0;
    }
    return status;
}

std::string failureOf(int status, const std::string& url) {
    const std::string end =
        WIFEXITED(status) ? "status " + std::to_string(WEXITSTATUS(status)) : "signal " + std::to_string(WTERMSIG(status));
    return std::string("Ovin: ") + program + " could not open " + url + ": it ended with " + end;
}

}  // namespace

UrlOpener::~UrlOpener() { log_->end(); }

void UrlOpener::open(const std::string& url) {
    if (!mayBeOpened(url)) return log_->write("Ovin: not an address to be opened: " + url);
    pid_t pid = 0;
    if (const int error = start(url, pid)) {
        return log_->write(std::string("Ovin: ") + program +
                           " cannot be started: " + std::generic_category().message(error));
    }
    // Waits for as long as the browser may run. Any other way would take the signal of its end from the toolkit.
    std::thread([log = log_, pid, url] {
        if (const int status = awaitEnd(pid)) log->write(failureOf(status, url));
    }).detach();
}

void UrlOpener::Log::write(const std::string& line) {
    const std::lock_guard lock(mutex_);
    if (log_ != nullptr) log_->write(line);
}

void UrlOpener::Log::end() {
    const std::lock_guard lock(mutex_);
    log_ = nullptr;
}

}  // namespace ovin
