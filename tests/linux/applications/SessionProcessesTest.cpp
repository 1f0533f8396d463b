#include "platform/linux/applications/SessionProcesses.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/system/Bus.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

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
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }

    [[nodiscard]] pid_t pid() const { return pid_; }

private:
    pid_t pid_ = 0;
};

class SessionProcessesTest : public testing::Test {
protected:
    SessionProcessesTest() {
        std::array<char, 512> line{};
        const ssize_t length = read(pipe_[0], line.data(), line.size());
        address_.assign(line.data(), length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
    }
    ~SessionProcessesTest() override {
        for (const int end : pipe_) close(end);
    }

    std::array<int, 2> pipe_ = [] {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        return ends;
    }();
    const Program daemon_{{"dbus-daemon", "--session", "--nofork", "--print-address"}, pipe_[1]};
    std::string address_;
};

TEST_F(SessionProcessesTest, AProcessIsKnownHoweverLateTheAnswerIsRead) {
    const auto bus = Bus::connect(address_);
    ASSERT_NE(bus, nullptr);
    SessionProcesses processes(*bus);
    // The bus's thread gets the processor only now and then.
    processes.observe([] { std::this_thread::sleep_for(1100ms); });
    const std::vector<std::string> client{"gdbus", "monitor", "--address", address_, "--dest", "org.ovin.Nobody"};
    const Program first(client);
    const Program second(client);
    const Program third(client);
    const auto expected = testing::IsSupersetOf({first.pid(), second.pid(), third.pid()});
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!testing::Value(processes.processes(), expected) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(10ms);
    EXPECT_THAT(processes.processes(), expected);
}

}  // namespace
}  // namespace ovin
