#include "platform/linux/system/StartProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>

#include "platform/linux/system/Environment.h"

namespace ovin {
namespace {

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

    int start(const std::string& program, const std::vector<char*>& arguments, pid_t& pid) const {
        return posix_spawnp(&pid, program.c_str(), &actions_, &attributes_, arguments.data(), environmentForOthers().data());
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

int startProgram(const std::string& program, std::vector<std::string> arguments, pid_t& pid) {
    arguments.insert(arguments.begin(), program);
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    return Spawning().start(program, words, pid);
}

int awaitEnd(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) return 0;
    }
    return status;
}

}  // namespace ovin
