#include "platform/linux/system/Bus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <mutex>
#include <vector>

#include "platform/linux/system/BusNames.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

/// A bus that takes connections and says nothing.
class BusTest : public testing::Test {
protected:
    BusTest() {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        path_.copy(name.sun_path, sizeof name.sun_path - 1);
        EXPECT_EQ(bind(listener_, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
        EXPECT_EQ(listen(listener_, 1), 0);
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &usual_), 0);
    }
    ~BusTest() override {
        setrlimit(RLIMIT_NOFILE, &usual_);
        close(listener_);
    }

    [[nodiscard]] std::string address() const { return "unix:path=" + path_; }

    /// Lets this process open at most so many more files.
    void leaveRoomFor(rlim_t files) {
        const int next = dup(listener_);
        ASSERT_EQ(close(next), 0);
        rlimit limit = usual_;
        limit.rlim_cur = static_cast<rlim_t>(next) + files;
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    }

private:
    const TemporaryFolder folder_;
    const std::string path_ = (folder_.path() / "bus").string();
    rlimit usual_{};
    const int listener_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST_F(BusTest, AConnectionTakesFewFiles) {
    // The bus itself needs two; sanitizers use a pipe to look at a thread.
    leaveRoomFor(4);
    EXPECT_NE(Bus::connect(address()), nullptr);
}

TEST_F(BusTest, WithoutRoomForItsFilesThereIsNoConnection) {
    leaveRoomFor(1);
    EXPECT_EQ(Bus::connect(address()), nullptr);
}

/// A program that sends signals.
class Sender {
public:
    explicit Sender(const std::string& address) {
        EXPECT_GE(sd_bus_new(&bus_), 0);
        EXPECT_GE(sd_bus_set_address(bus_, address.c_str()), 0);
        EXPECT_GE(sd_bus_set_bus_client(bus_, 1), 0);
        EXPECT_GE(sd_bus_start(bus_), 0);
    }
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;
    ~Sender() { sd_bus_flush_close_unref(bus_); }

    void own(const char* name) { EXPECT_GE(sd_bus_request_name(bus_, name, 0), 0); }
    void release(const char* name) { EXPECT_GE(sd_bus_release_name(bus_, name), 0); }

    /// Sends a signal to everybody, and another one to the first connection of the bus alone; returns when both are sent.
    void send(const std::string& member) {
        EXPECT_GE(sd_bus_emit_signal(bus_, "/", "org.ovin.Test", member.c_str(), ""), 0);
        sd_bus_message* message = nullptr;
        EXPECT_GE(sd_bus_message_new_signal(bus_, &message, "/", "org.ovin.Test", (member + "Alone").c_str()), 0);
        EXPECT_GE(sd_bus_message_set_destination(message, ":1.0"), 0);
        EXPECT_GE(sd_bus_send(bus_, message, nullptr), 0);
        sd_bus_message_unref(message);
        own("org.ovin.Sent");
        release("org.ovin.Sent");
    }

    void sendTexts(const std::string& one, const std::string& two) {
        EXPECT_GE(sd_bus_emit_signal(bus_, "/", "org.ovin.Test", "Texts", "ss", one.c_str(), two.c_str()), 0);
        EXPECT_GE(sd_bus_flush(bus_), 0);
    }

private:
    sd_bus* bus_ = nullptr;
};

constexpr const char* watchedName = "org.ovin.Watched";

TEST(BusSignals, OnlyTheOwnerOfTheNameIsBelievedWhoeverThatIs) {
    const PrivateBus privateBus;
    const auto bus = Bus::connect(privateBus.address());
    ASSERT_NE(bus, nullptr);
    const auto roundTrip = [&bus] {
        EXPECT_FALSE(bus->callAndWait(busDaemonCall("GetId"), std::chrono::seconds(20)).isError());
    };
    roundTrip();  // it is the first connection from now on
    Sender first(privateBus.address());
    Sender second(privateBus.address());
    first.own(watchedName);
    std::mutex mutex;
    std::vector<std::string> heard;
    bus->watch(watchedName, "interface='org.ovin.Test'", [&](const BusSignal& signal) {
        const std::lock_guard lock(mutex);
        heard.push_back(signal.member);
    });
    first.send("Owner");
    second.send("Stranger");
    first.release(watchedName);
    first.send("FormerOwner");
    second.own(watchedName);
    first.send("Stranger");
    second.send("NextOwner");
    // What was sent before has come by the time that this is answered.
    roundTrip();
    const std::lock_guard lock(mutex);
    EXPECT_THAT(heard, testing::ElementsAre("Owner", "OwnerAlone", "NextOwner", "NextOwnerAlone"));
}

TEST(BusSignals, TextsThatTogetherExceedTheBoundAreLeftOut) {
    const PrivateBus privateBus;
    const auto bus = Bus::connect(privateBus.address());
    ASSERT_NE(bus, nullptr);
    Sender sender(privateBus.address());
    sender.own(watchedName);
    std::promise<std::vector<BusValue>> heard;
    bus->watch(watchedName, "interface='org.ovin.Test'",
               [&heard](const BusSignal& signal) { heard.set_value(signal.values); });
    const std::string text(3 << 20, 'T');
    sender.sendTexts(text, text);
    auto coming = heard.get_future();
    ASSERT_EQ(coming.wait_for(std::chrono::seconds(20)), std::future_status::ready);
    const auto values = coming.get();
    ASSERT_EQ(values.size(), 2U);
    EXPECT_EQ(values[0].string(), text);
    EXPECT_EQ(values[1].as<std::string>(), nullptr);
}

}  // namespace
}  // namespace ovin
