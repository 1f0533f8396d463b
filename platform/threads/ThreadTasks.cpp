#include "platform/threads/ThreadTasks.h"

#include <atomic>
#include <deque>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace ovin {
namespace {

/// Passes the numbers of finished children from their threads to the thread that waits for them.
class FinishedChildren {
public:
    void push(std::size_t index) {
        // Notified under the lock: the waiting thread may destroy this object as soon as it has the last number.
        const std::lock_guard lock(mutex_);
        indices_.push_back(index);
        notEmpty_.notify_one();
    }

    std::size_t pop() {
        std::unique_lock lock(mutex_);
        notEmpty_.wait(lock, [this] { return !indices_.empty(); });
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

// Starts threads until every child has begun. A thread whose child has returned takes the next child, so that many quick
// children need few threads, and no child ever waits for another that does not return.
void ThreadTasks::forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                          const std::function<void(std::size_t)>& finished) {
    std::atomic<std::size_t> begun = 0;
    FinishedChildren finishedChildren;
    const auto runNext = [&] {
        const std::size_t index = begun.fetch_add(1);
        if (index >= count) return false;
        child(index);
        finishedChildren.push(index);
        return true;
    };

    std::vector<std::thread> threads;
    threads.reserve(count);
    while (begun < count) {
        try {
            threads.emplace_back([&runNext] {
                while (runNext()) {
                }
            });
        } catch (const std::system_error&) {
            runNext();
        }
    }
    for (std::size_t i = 0; i < count; ++i) finished(finishedChildren.pop());
    for (std::thread& thread : threads) thread.join();
}

}  // namespace ovin
