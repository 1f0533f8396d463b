#include "platform/linux/applications/SessionProcesses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/system/BusNames.h"
#include "tests/support/PrivateBus.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

TEST(SessionProcesses, AProcessIsKnownHoweverLateTheAnswerIsRead) {
    const PrivateBus privateBus;
    const auto bus = Bus::connect(privateBus.address());
    ASSERT_NE(bus, nullptr);
    SessionProcesses processes(*bus);
    // The bus's thread gets the processor only now and then.
    processes.observe([] { std::this_thread::sleep_for(1100ms); });
    const std::vector<std::string> client{"gdbus",  "monitor",        "--address", privateBus.address(),
                                          "--dest", "org.ovin.Nobody"};
    const Program first(client);
    const Program second(client);
    const Program third(client);
    const auto expected = testing::IsSupersetOf({first.pid(), second.pid(), third.pid()});
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (!testing::Value(processes.processes(), expected) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(10ms);
    EXPECT_THAT(processes.processes(), expected);
}

TEST(SessionProcesses, AStrangerCannotSayThatAProcessHasGone) {
    const PrivateBus privateBus;
    const auto bus = Bus::connect(privateBus.address());
    ASSERT_NE(bus, nullptr);
    const SessionProcesses processes(*bus);
    ASSERT_THAT(processes.processes(), testing::ElementsAre(getpid()));
    privateBus.send(":1.0", "/org/freedesktop/DBus", "org.freedesktop.DBus.NameOwnerChanged", {"':1.0'", "':1.0'", "''"});
    // What was sent before has come by the time that this is answered.
    EXPECT_FALSE(bus->callAndWait(busDaemonCall("GetId"), 20s).isError());
    EXPECT_THAT(processes.processes(), testing::ElementsAre(getpid()));
}

}  // namespace
}  // namespace ovin
