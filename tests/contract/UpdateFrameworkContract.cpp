#include <chrono>
#include <memory>
#include <optional>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class UpdateFrameworkContract : public ContractTest {
protected:
    /// Elsewhere an alert would wait for somebody.
    void SetUp() override { OVIN_NEEDS(makeUpdates); }

    /// Which functions of the delegate were called.
    int calls = 0;

    [[nodiscard]] std::unique_ptr<UpdateFramework::Controller> start() {
        return platform().updates.start({[this] {
                                             ++calls;
                                             return std::nullopt;
                                         },
                                         [this] { ++calls; }});
    }
    void pass(Stage::Duration time) const {
        stage().runUntil([] { return false; }, time);
    }
};

TEST_P(UpdateFrameworkContract, ItAsksNothingWhileItStarts) {
    const auto controller = start();
    ASSERT_NE(controller, nullptr);
    EXPECT_EQ(calls, 0);
}

TEST_P(UpdateFrameworkContract, TheUserMayAskAtAnyTime) {
    const auto controller = start();
    controller->checkForUpdates();
    controller->checkForUpdates();
    pass(20ms);
    controller->checkForUpdates();
    pass(20ms);
}

TEST_P(UpdateFrameworkContract, WithoutItsControllerItCallsNobodyAndCanBeStartedAgain) {
    for (int i = 0; i < 3; ++i) {
        auto controller = start();
        ASSERT_NE(controller, nullptr);
        controller->checkForUpdates();
        controller.reset();
        const int before = calls;
        pass(50ms);
        EXPECT_EQ(calls, before);
    }
}

OVIN_IN_EVERY_WORLD(UpdateFrameworkContract);

}  // namespace
}  // namespace ovin
