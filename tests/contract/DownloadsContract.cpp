#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "tests/contract/ContractTest.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

class DownloadsContract : public ContractTest {
protected:
    void SetUp() override { OVIN_NEEDS(makeUpdates); }

    const std::string text = std::string(100000, 'a') + "z";

    Downloads::Text read(const Downloads::Source& source, std::size_t longest) {
        std::optional<Downloads::Text> result;
        int calls = 0;
        const auto transfer = stage().downloads().read(source, longest, [&](Downloads::Text read) {
            result = std::move(read);
            ++calls;
        });
        EXPECT_FALSE(result.has_value()) << "never within the call";
        EXPECT_TRUE(stage().runUntil([&] { return result.has_value(); }, longTime));
        pass(20ms);
        EXPECT_EQ(calls, 1);
        return result.value_or("nothing");
    }
    Downloads::File download(const Downloads::Source& source, std::uint64_t length) {
        std::optional<Downloads::File> result;
        std::uint64_t last = 0;
        const auto progressed = [&](std::uint64_t received) {
            EXPECT_GE(received, last);
            EXPECT_LE(received, length);
            last = received;
        };
        const auto transfer = stage().downloads().download(source, length, progressed,
                                                           [&](Downloads::File file) { result = std::move(file); });
        EXPECT_FALSE(result.has_value()) << "never within the call";
        EXPECT_TRUE(stage().runUntil([&] { return result.has_value(); }, longTime));
        return result.value_or(DownloadFailure::unreachable);
    }
    void pass(Stage::Duration time) const {
        stage().runUntil([] { return false; }, time);
    }
    template <typename Result>
    static std::optional<DownloadFailure> failureOf(const Result& result) {
        const auto* const failure = std::get_if<DownloadFailure>(&result);
        return failure == nullptr ? std::nullopt : std::optional(*failure);
    }
};

TEST_P(DownloadsContract, ATextIsReadAsAWhole) {
    const auto source = stage().offer(text);
    EXPECT_EQ(read(source, text.size()), Downloads::Text(text));
    EXPECT_EQ(read(source, 1 << 20), Downloads::Text(text));
    EXPECT_EQ(read(stage().offer(""), 10), Downloads::Text(""));
}

TEST_P(DownloadsContract, ATextThatIsTooLongIsNotDelivered) {
    EXPECT_EQ(failureOf(read(stage().offer(text), text.size() - 1)), DownloadFailure::tooLong);
    EXPECT_EQ(failureOf(read(stage().offer("a"), 0)), DownloadFailure::tooLong);
}

TEST_P(DownloadsContract, WhatIsNotThereIsAFailure) {
    auto source = stage().offer(text);
    source.url += "000";
    EXPECT_TRUE(failureOf(read(source, 10)).has_value());
    EXPECT_TRUE(failureOf(download(source, 10)).has_value());
}

TEST_P(DownloadsContract, PlainSourcesAreReadOnThisMachineAloneAndOnlyWhereThatIsAllowed) {
    auto source = stage().offer(text);
    source.mayBePlainOnThisMachine = false;
    EXPECT_EQ(failureOf(read(source, text.size())), DownloadFailure::insecure);
    EXPECT_EQ(failureOf(download(source, text.size())), DownloadFailure::insecure);
    for (const char* url : {"http://ovin.example/a", "http://localhost.example/a", "http://localhost@ovin.example/a",
                            "ftp://localhost/a", "file:///etc/hostname", "localhost", ""}) {
        EXPECT_EQ(failureOf(read({url, true}, 10)), DownloadFailure::insecure) << url;
    }
}

TEST_P(DownloadsContract, AFileHasExactlyItsLength) {
    const auto source = stage().offer(text);
    const auto file = download(source, text.size());
    ASSERT_EQ(failureOf(file), std::nullopt);
    EXPECT_NE(std::get<std::shared_ptr<const DownloadedFile>>(file), nullptr);
    EXPECT_EQ(failureOf(download(source, text.size() - 1)), DownloadFailure::tooLong);
    EXPECT_EQ(failureOf(download(source, text.size() + 1)), DownloadFailure::tooShort);
}

TEST_P(DownloadsContract, ATransferThatIsDestroyedIsSilent) {
    const auto source = stage().offer(text);
    for (const auto moment : {0ms, 1ms, 5ms, 50ms}) {
        bool isDestroyed = false;
        auto reading = stage().downloads().read(source, text.size(), [&](const auto&) { EXPECT_FALSE(isDestroyed); });
        auto downloading = stage().downloads().download(
            source, text.size(), [&](std::uint64_t) { EXPECT_FALSE(isDestroyed); },
            [&](const auto&) { EXPECT_FALSE(isDestroyed); });
        pass(moment);
        isDestroyed = true;
        reading.reset();
        downloading.reset();
        pass(100ms);
    }
}

TEST_P(DownloadsContract, AHandlerMayDestroyItsTransferAndBeginTheNext) {
    const auto source = stage().offer(text);
    std::unique_ptr<Downloads::Transfer> transfer;
    int count = 0;
    const std::function<void(Downloads::Text)> next = [&](const Downloads::Text&) {
        transfer.reset();
        if (++count < 3) transfer = stage().downloads().read(source, text.size(), next);
    };
    transfer = stage().downloads().read(source, text.size(), next);
    EXPECT_TRUE(stage().runUntil([&] { return count == 3; }, longTime));
}

OVIN_IN_EVERY_WORLD(DownloadsContract);

}  // namespace
}  // namespace ovin
