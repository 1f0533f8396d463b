#include "platform/linux/UrlOpener.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <strings.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/linux/Environment.h"

namespace ovin {
namespace {

constexpr const char* program = "xdg-open";

/// What an AppImage sets for the program inside and would keep others from finding their own libraries.
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

/// How the program starts: in a session of its own, so that it outlives this one and its terminal, with nothing of this
/// process but its output.
class Spawning {
public:
    Spawning() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    Spawning(const Spawning&) = delete;
    Spawning& operator=(const Spawning&) = delete;
    ~Spawning() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    /// Returns what the system says is wrong, or 0.
    int start(std::string url, pid_t& pid) const {
        std::string name = program;
        std::array<char*, 3> arguments{name.data(), url.data(), nullptr};
        return posix_spawnp(&pid, program, &actions_, &attributes_, arguments.data(), environmentForOthers().data());
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

bool hasScheme(const std::string& url, std::string_view scheme) {
    return url.size() > scheme.size() && strncasecmp(url.data(), scheme.data(), scheme.size()) == 0;
}

}  // namespace

bool mayBeOpened(const std::string& url) {
    const auto isPlain = [](char character) { return character > ' ' && character < 0x7f; };
    return (hasScheme(url, "https://") || hasScheme(url, "http://") || hasScheme(url, "mailto:")) &&
           std::all_of(url.begin(), url.end(), isPlain);
}

UrlOpener::~UrlOpener() { log_->end(); }

void UrlOpener::open(const std::string& url) {
    if (!mayBeOpened(url)) return log_->write("not an address to be opened: " + url);
    pid_t pid = 0;
    if (const int error = Spawning().start(url, pid)) {
        return log_->write(std::string(program) + " cannot be started: " + std::generic_category().message(error));
    }
    // It may last as long as the browser does. Nothing else tells of its end without taking that signal from the toolkit.
    std::thread([log = log_, pid, url] { awaitEnd(log, pid, url); }).detach();
}

void UrlOpener::awaitEnd(const std::shared_ptr<Log>& log, pid_t pid, const std::string& url) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) return;
    }
    if (status == 0) return;
    const std::string end =
        WIFEXITED(status) ? "status " + std::to_string(WEXITSTATUS(status)) : "signal " + std::to_string(WTERMSIG(status));
    log->write(std::string(program) + " could not open " + url + ": it ended with " + end);
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
