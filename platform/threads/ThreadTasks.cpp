#include "platform/threads/ThreadTasks.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace ovin {
namespace {

constexpr std::chrono::microseconds pace{10};
constexpr std::chrono::hours forEver{24};

/// Passes the numbers of finished children from their threads to the thread that waits for them.
class FinishedChildren {
public:
    void push(std::size_t index) {
        // Notified under the lock: the waiting thread may destroy this object as soon as it has the last number.
        const std::lock_guard lock(mutex_);
        indices_.push_back(index);
        notEmpty_.notify_one();
    }

    /// The next number; nothing when none comes within `longest`.
    std::optional<std::size_t> pop(std::chrono::nanoseconds longest) {
        std::unique_lock lock(mutex_);
        if (!notEmpty_.wait_for(lock, longest, [this] { return !indices_.empty(); })) return std::nullopt;
        const std::size_t index = indices_.front();
        indices_.pop_front();
        return index;
    }

private:
    std::mutex mutex_;
    std::condition_variable notEmpty_;
    std::deque<std::size_t> indices_;
};

}  // namespace

ThreadTasks::~ThreadTasks() {
    std::unique_lock lock(mutex_);
    allEnded_.wait(lock, [this] { return running_ == 0; });
}

void ThreadTasks::start(Priority, std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        ++running_;
    }
    // The thread gets a copy of the pointer, so that the work is kept if the thread cannot be started.
    const auto shared = std::make_shared<std::function<void()>>(std::move(work));
    const auto run = [this, shared] {
        (*shared)();
        *shared = nullptr;  // Destroys what the work holds before its end is reported.
        const std::lock_guard lock(mutex_);
        if (--running_ == 0) allEnded_.notify_all();
    };
    try {
        std::thread([this, run] {
            prepare_();
            run();
        }).detach();
    } catch (const std::system_error&) {
        run();
    }
}

// A thread whose child has returned takes the next child, and further threads are started only while children begin more
// slowly than one in each `pace`: quick children need few threads, and no child waits for another that does not return.
void ThreadTasks::forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                          const std::function<void(std::size_t)>& finished) {
    std::atomic<std::size_t> begun = 0;
    FinishedChildren finishedChildren;
    const auto run = [&](std::size_t index) {
        for (; index < count; index = begun.fetch_add(1)) {
            child(index);
            finishedChildren.push(index);
        }
    };

    std::vector<std::thread> threads;
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t reported = 0; reported < count;) {
        const auto due = static_cast<std::size_t>((std::chrono::steady_clock::now() - start) / pace) + 1;
        while (begun < std::min(due, count)) {
            const std::size_t index = begun.fetch_add(1);
            if (index >= count) break;
            try {
                threads.emplace_back(run, index);
            } catch (const std::system_error&) {
                child(index);
                finishedChildren.push(index);
            }
        }
        if (const auto index = finishedChildren.pop(begun < count ? pace : forEver)) {
            ++reported;
            finished(*index);
        }
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace ovin
