#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/UpdateFeed.h"
#include "platform/WallClock.h"
#include "platform/memory/SimulatedTime.h"

namespace ovin {

/// A clock that a test can set wrong, on a computer that never sleeps.
class MemoryWallClock final : public WallClock {
public:
    explicit MemoryWallClock(SimulatedTime& time) : time_(time) {}

    /// Lets somebody set the date.
    void changeDate(std::chrono::seconds by) { start_ += by; }

    [[nodiscard]] std::chrono::seconds date() const override {
        return start_ + std::chrono::floor<std::chrono::seconds>(time_.now());
    }
    [[nodiscard]] std::unique_ptr<MainQueue::Timer> after(std::chrono::seconds delay,
                                                          std::function<void()> handler) override {
        return time_.after(delay, std::move(handler));
    }

private:
    SimulatedTime& time_;
    /// The date at the beginning of the simulation.
    std::chrono::seconds start_{1'800'000'000};
};

/// Feeds at addresses, each of which answers or fails after a while.
class MemoryUpdateFeed final : public UpdateFeed {
public:
    explicit MemoryUpdateFeed(SimulatedTime& time) : time_(time) {}

    std::map<std::string, Answer> answers;
    std::chrono::seconds latency{1};
    /// The addresses that were read from, in their order.
    std::vector<std::string> requests;

    [[nodiscard]] std::unique_ptr<Reading> read(const std::string& url, std::function<void(Answer)> finished) override {
        requests.push_back(url);
        auto reading = std::make_unique<Pending>();
        reading->timer = time_.after(latency, [this, url, finished = std::move(finished)] {
            const auto found = answers.find(url);
            finished(found == answers.end() ? Answer(FeedFailure::unreachable) : found->second);
        });
        return reading;
    }

private:
    struct Pending final : public Reading {
        std::unique_ptr<MainQueue::Timer> timer;
    };

    SimulatedTime& time_;
};

}  // namespace ovin
