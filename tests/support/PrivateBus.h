#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace ovin {

/// A program that runs until this object goes.
class Program {
public:
    explicit Program(std::vector<std::string> arguments, int output = STDOUT_FILENO) {
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        EXPECT_EQ(posix_spawnp(&pid_, pointers[0], &actions, nullptr, pointers.data(), environ), 0) << arguments[0];
        posix_spawn_file_actions_destroy(&actions);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (pid_ == 0) return;
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }

    /// Waits for its end.
    [[nodiscard]] int status() {
        int status = 0;
        waitpid(std::exchange(pid_, 0), &status, 0);
        return status;
    }

    [[nodiscard]] pid_t pid() const { return pid_; }

private:
    pid_t pid_ = 0;
};

/// A message bus of its own.
class PrivateBus {
public:
    PrivateBus() {
        std::array<char, 512> line{};
        const ssize_t length = read(pipe_[0], line.data(), line.size());
        address_.assign(line.data(), length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
    }
    ~PrivateBus() {
        for (const int end : pipe_) close(end);
    }

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const std::string& address() const { return address_; }

    /// Sends the connection `destination` a signal from a connection of its own, and returns once it is sent.
    void send(const std::string& destination, const std::string& path, const std::string& signal,
              const std::vector<std::string>& arguments) const {
        std::vector<std::string> command{"gdbus",     "emit",          "--address", address_,   "--dest",
                                         destination, "--object-path", path,        "--signal", signal};
        command.insert(command.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(Program(command).status(), 0) << signal;
    }

private:
    std::array<int, 2> pipe_ = [] {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        return ends;
    }();
    const Program daemon_{{"dbus-daemon", "--session", "--nofork", "--print-address"}, pipe_[1]};
    std::string address_;
};

}  // namespace ovin
