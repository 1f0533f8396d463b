#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class UpdateFeedContract : public ContractTest {
protected:
    void SetUp() override { OVIN_NEEDS(makeUpdates); }

    const std::vector<FeedItem> items{{"2", "2.0", "https://ovin.example/2"}, {"10", "", ""}, {"3", "3.0", "nowhere"}};

    UpdateFeed::Answer read(const std::string& url) {
        std::optional<UpdateFeed::Answer> result;
        int calls = 0;
        const auto reading = stage().updateFeed().read(url, [&](UpdateFeed::Answer answer) {
            result = std::move(answer);
            ++calls;
        });
        EXPECT_FALSE(result.has_value()) << "never within the call";
        EXPECT_TRUE(stage().runUntil([&] { return result.has_value(); }, longTime));
        pass(20ms);
        EXPECT_EQ(calls, 1);
        return result.value_or(FeedFailure::unreachable);
    }
    void pass(Stage::Duration time) const {
        stage().runUntil([] { return false; }, time);
    }
};

TEST_P(UpdateFeedContract, TheItemsComeInTheOrderOfTheFeed) {
    EXPECT_EQ(read(stage().announce(items)), UpdateFeed::Answer(items));
    EXPECT_EQ(read(stage().announce({})), UpdateFeed::Answer(std::vector<FeedItem>()));
}

TEST_P(UpdateFeedContract, WhatIsNotThereIsAFailure) {
    EXPECT_TRUE(std::holds_alternative<FeedFailure>(read(stage().announce(items) + "999")));
}

TEST_P(UpdateFeedContract, AReadingThatIsDestroyedIsSilent) {
    const std::string url = stage().announce(items);
    for (const auto moment : {0ms, 1ms, 5ms, 50ms}) {
        bool isDestroyed = false;
        auto reading = stage().updateFeed().read(url, [&](const auto&) { EXPECT_FALSE(isDestroyed); });
        pass(moment);
        isDestroyed = true;
        reading.reset();
        pass(100ms);
    }
}

TEST_P(UpdateFeedContract, AHandlerMayDestroyItsReadingAndBeginTheNext) {
    const std::string url = stage().announce(items);
    std::unique_ptr<UpdateFeed::Reading> reading;
    int count = 0;
    const std::function<void(UpdateFeed::Answer)> next = [&](const UpdateFeed::Answer&) {
        reading.reset();
        if (++count < 3) reading = stage().updateFeed().read(url, next);
    };
    reading = stage().updateFeed().read(url, next);
    EXPECT_TRUE(stage().runUntil([&] { return count == 3; }, longTime));
}

OVIN_IN_EVERY_WORLD(UpdateFeedContract);

}  // namespace
}  // namespace ovin
