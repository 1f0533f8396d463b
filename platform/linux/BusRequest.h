#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace ovin {

/// The state of one or more calls that were sent together, between the bus's thread, which collects the answers, and the
/// threads that wait for them. Whoever waits, waits for what is left of the bound since the calls were *sent*: asking a
/// program for four things at once and finding none costs one bound, not four.
class BusRequest {
public:
    using Duration = std::chrono::nanoseconds;

    BusRequest() = default;
    BusRequest(const BusRequest&) = delete;
    BusRequest& operator=(const BusRequest&) = delete;
    virtual ~BusRequest() = default;

    /// Waits until all answers have come, for at most `bound` after the calls were sent; false when they have not.
    [[nodiscard]] bool wait(Duration bound) {
        std::unique_lock lock(mutex_);
        return changed_.wait_until(lock, sent_ + bound, [this] { return isDone_; });
    }

    /// Whether the answers are too old to speak for the present: they have all come, and were asked for longer than `age`
    /// ago. Calls without an answer are never repeated before the bus gives them up: it would only fill up the queue of a
    /// program that does not read it.
    [[nodiscard]] bool isStale(Duration age) {
        const std::lock_guard lock(mutex_);
        return isDone_ && std::chrono::steady_clock::now() - sent_ > age;
    }

protected:
    /// All answers have come. Called on the bus's thread, once.
    void finish() {
        {
            const std::lock_guard lock(mutex_);
            isDone_ = true;
        }
        // Whoever wakes up finds the lock free. The caller holds the request until this returns.
        changed_.notify_all();
    }

private:
    const std::chrono::steady_clock::time_point sent_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isDone_ = false;
};

/// When the bus gives up a call that nobody waits for any more.
inline constexpr std::chrono::seconds abandonedCallTimeout{5};

}  // namespace ovin
