#include "platform/linux/system/Bus.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

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

}  // namespace
}  // namespace ovin
