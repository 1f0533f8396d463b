#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using Status = LaunchAtLogin::Status;

class LaunchAtLoginContract : public ContractTest {
protected:
    /// Where a stage cannot undo a registration, which the user would see, the test must not even try one.
    void SetUp() override { OVIN_NEEDS(changeLoginItems); }

    [[nodiscard]] LaunchAtLogin& login() const { return platform().launchAtLogin; }
};

TEST_P(LaunchAtLoginContract, NobodyIsRegisteredAtFirst) { EXPECT_EQ(login().status(), Status::notRegistered); }

TEST_P(LaunchAtLoginContract, WhoIsRegisteredIsEnabledUntilUnregistered) {
    EXPECT_EQ(login().registerApplication(), std::nullopt);
    EXPECT_EQ(login().status(), Status::enabled);
    EXPECT_EQ(login().unregisterApplication(), std::nullopt);
    EXPECT_EQ(login().status(), Status::notRegistered);
}

TEST_P(LaunchAtLoginContract, BothMayBeAskedForTwice) {
    EXPECT_EQ(login().registerApplication(), std::nullopt);
    EXPECT_EQ(login().registerApplication(), std::nullopt);
    EXPECT_EQ(login().status(), Status::enabled);
    EXPECT_EQ(login().unregisterApplication(), std::nullopt);
    EXPECT_EQ(login().unregisterApplication(), std::nullopt);
    EXPECT_EQ(login().status(), Status::notRegistered);
}

TEST_P(LaunchAtLoginContract, WhatTheUserHasSwitchedOffRegisteringDoesNotSwitchOn) {
    EXPECT_EQ(login().registerApplication(), std::nullopt);
    stage().switchOffLaunchAtLogin();
    EXPECT_EQ(login().status(), Status::requiresApproval);
    (void)login().registerApplication();
    EXPECT_EQ(login().status(), Status::requiresApproval);
}

TEST_P(LaunchAtLoginContract, WhatTheUserHasSwitchedOffCanBeUnregistered) {
    EXPECT_EQ(login().registerApplication(), std::nullopt);
    stage().switchOffLaunchAtLogin();
    EXPECT_EQ(login().unregisterApplication(), std::nullopt);
    EXPECT_EQ(login().status(), Status::notRegistered);
}

TEST_P(LaunchAtLoginContract, ARefusalIsToldInWordsAndChangesNothing) {
    stage().setRefusesLaunchAtLogin(true);
    EXPECT_NE(login().registerApplication().value_or(""), "");
    EXPECT_EQ(login().status(), Status::notRegistered);
    stage().setRefusesLaunchAtLogin(false);
    EXPECT_EQ(login().registerApplication(), std::nullopt);
    EXPECT_EQ(login().status(), Status::enabled);
}

OVIN_IN_EVERY_WORLD(LaunchAtLoginContract);

}  // namespace
}  // namespace ovin
