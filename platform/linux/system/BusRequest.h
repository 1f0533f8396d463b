#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace ovin {

/// The state of one or more calls that were sent together. The bus's thread collects the answers; any thread may wait for
/// them. The bound of a wait counts from when the calls were *sent*: waiting four times for a program that does not answer
/// costs one bound, not four.
class BusRequest {
public:
    using Duration = std::chrono::nanoseconds;

    BusRequest() = default;
    BusRequest(const BusRequest&) = delete;
    BusRequest& operator=(const BusRequest&) = delete;
    virtual ~BusRequest() = default;

    /// Waits until all answers have come, for at most `bound` after the calls were sent; false when they have not.
    [[nodiscard]] bool wait(Duration bound) { return waitUntil(sent_ + bound); }

    /// The same, for a caller with a bound of its own, until a point in time.
    [[nodiscard]] bool waitUntil(std::chrono::steady_clock::time_point deadline) {
        std::unique_lock lock(mutex_);
        return changed_.wait_until(lock, deadline, [this] { return isDone_; });
    }

    /// Whether all answers have come.
    [[nodiscard]] bool isDone() {
        const std::lock_guard lock(mutex_);
        return isDone_;
    }

    /// Whether the answers, which somebody has read from since `since`, are too old to use. False while answers are missing:
    /// repeating the calls before the bus gives them up would only fill the queue of a program that does not read it.
    [[nodiscard]] bool isStale(std::chrono::steady_clock::time_point since) {
        const std::lock_guard lock(mutex_);
        return isDone_ && std::chrono::steady_clock::now() - std::max(answered_, since) > freshness;
    }

protected:
    /// Call it once, on the bus's thread, when all answers have come.
    void finish() {
        {
            const std::lock_guard lock(mutex_);
            isDone_ = true;
            answered_ = std::chrono::steady_clock::now();
        }
        // After unlocking, so that woken threads find the lock free. The caller keeps the request alive until this returns.
        changed_.notify_all();
    }

private:
    /// Long enough for a scan to read what it has requested ahead, and too short for a user to notice.
    static constexpr std::chrono::milliseconds freshness{100};

    const std::chrono::steady_clock::time_point sent_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point answered_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isDone_ = false;
};

/// The request that a reference reads its attributes from. A request serves each attribute once, and only while it is fresh,
/// because a caller that reads an attribute twice wants to know whether it has changed.
template <typename Request>
class CurrentRequest {
public:
    /// The request to read `attribute` from. Where the last one no longer serves, `make` makes another, or returns null.
    template <typename Make>
    [[nodiscard]] std::shared_ptr<Request> forReading(std::string_view attribute, Make make) {
        const std::lock_guard lock(mutex_);
        const bool serves = request_ && (!request_->isDone() || (!request_->isStale(since_) && !read_.contains(attribute)));
        if (!serves) {
            request_ = make();
            since_ = std::chrono::steady_clock::now();
            read_.clear();
        }
        read_.emplace(attribute);
        return request_;
    }

    /// Makes a request ahead of the first reading.
    template <typename Make>
    void prepare(Make make) {
        const std::lock_guard lock(mutex_);
        if (!request_) request_ = make();
    }

    /// The last request, whatever its age; null before the first one.
    [[nodiscard]] std::shared_ptr<Request> last() {
        const std::lock_guard lock(mutex_);
        return request_;
    }

private:
    std::mutex mutex_;
    std::shared_ptr<Request> request_;
    /// When `request_` was taken for a reading; it may have been sent long before.
    std::chrono::steady_clock::time_point since_;
    std::set<std::string, std::less<>> read_;
};

/// How long the bus waits for the answer to a call that nobody may wait for any more.
inline constexpr std::chrono::seconds abandonedCallTimeout{5};

}  // namespace ovin
