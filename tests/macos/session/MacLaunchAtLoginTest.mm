#include "platform/macos/session/MacLaunchAtLogin.h"

#include <gtest/gtest.h>

#include <memory>

namespace ovin {
namespace {

using Status = LaunchAtLogin::Status;

/// A program without a bundle cannot start at login. Nothing here asks the system to let one: were it to agree, the user
/// would keep the item.
TEST(MacLaunchAtLoginTest, AProgramWithoutABundleIsNoLoginItemAndCannotBeRemoved) {
    const auto login = makeMacLaunchAtLogin();
    const Status before = login->status();
    EXPECT_TRUE(before == Status::notFound || before == Status::notRegistered);
    const auto failure = login->unregisterApplication();
    // To ask for what is so already is no failure; any other failure is told in words.
    EXPECT_EQ(failure.has_value(), before == Status::notFound);
    EXPECT_NE(failure, "");
    EXPECT_EQ(login->status(), before);
}

}  // namespace
}  // namespace ovin
