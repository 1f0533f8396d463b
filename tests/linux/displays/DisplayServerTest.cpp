#include "platform/linux/displays/DisplayServer.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

/// Another process that listens as a server does, and this process's connection to it.
class Server {
public:
    explicit Server(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        const auto* generic = reinterpret_cast<const sockaddr*>(&address);
        std::array<int, 2> ready{};
        EXPECT_EQ(pipe(ready.data()), 0);
        pid_ = fork();
        if (pid_ == 0) {
            const int listening = ::socket(AF_UNIX, SOCK_STREAM, 0);
            if (bind(listening, generic, sizeof address) == 0 && listen(listening, 1) == 0) close(ready[1]);
            for (;;) pause();
        }
        close(ready[1]);
        char nothing = 0;
        EXPECT_EQ(read(ready[0], &nothing, 1), 0);
        close(ready[0]);
        socket_ = ::socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(connect(socket_, generic, sizeof address), 0);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() {
        end();
        close(socket_);
    }

    [[nodiscard]] int socket() const { return socket_; }
    [[nodiscard]] pid_t pid() const { return pid_; }

    /// Nobody has asked for its status yet.
    void kill() const {
        ::kill(pid_, SIGKILL);
        siginfo_t info{};
        EXPECT_EQ(waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT), 0);
    }

    void end() {
        if (pid_ == 0) return;
        kill();
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

private:
    pid_t pid_ = 0;
    int socket_ = -1;
};

TEST(DisplayServer, ItHasItsNameUntilItEnds) {
    const TemporaryFolder folder;
    Server server(folder.path() / "socket");
    const auto name = displayServerName(server.socket());
    ASSERT_TRUE(name);
    EXPECT_EQ(displayServerName(server.socket()), name);
    EXPECT_TRUE(isDisplayServerRunning(*name));
    server.kill();
    EXPECT_FALSE(isDisplayServerRunning(*name));
    server.end();
    EXPECT_FALSE(isDisplayServerRunning(*name));
}

TEST(DisplayServer, TwoAreToldApart) {
    const TemporaryFolder folder;
    const Server first(folder.path() / "first");
    const Server second(folder.path() / "second");
    EXPECT_NE(displayServerName(first.socket()), displayServerName(second.socket()));
}

TEST(DisplayServer, AnotherProcessWithItsNumberIsAnotherOne) {
    const TemporaryFolder folder;
    const Server server(folder.path() / "socket");
    const std::string number = std::to_string(server.pid());
    const std::string name = displayServerName(server.socket()).value_or("");
    EXPECT_FALSE(isDisplayServerRunning(number + " 1" + name.substr(name.find(' '))));
    EXPECT_FALSE(isDisplayServerRunning(name.substr(0, name.rfind(' ')) + " 00000000-0000-0000-0000-000000000000"));
    for (const char* odd : {"", " ", "x", "1", "1 2", "-1 2 3"}) EXPECT_FALSE(isDisplayServerRunning(odd)) << odd;
}

}  // namespace
}  // namespace ovin
