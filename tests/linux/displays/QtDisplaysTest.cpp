#include "platform/linux/displays/QtDisplays.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "platform/linux/displays/DisplayServer.h"

namespace ovin {
namespace {

TEST(QtDisplays, AServerThatRunsIsNoOtherOneWhileThisOneCannotBeAsked) {
    std::array<int, 2> sockets{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets.data()), 0);
    const auto running = displayServerName(sockets[0]);
    for (const int socket : sockets) close(socket);
    ASSERT_TRUE(running && isDisplayServerRunning(*running));
    const QtDisplays displays;
    EXPECT_EQ(displays.serverName(), std::nullopt);
    EXPECT_FALSE(displays.isAnotherServer(*running));
}

}  // namespace
}  // namespace ovin
