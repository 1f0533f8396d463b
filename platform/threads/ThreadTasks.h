#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

#include "platform/Tasks.h"

namespace ovin {

/// Tasks as threads of the operating system, one for each task and at most one for each child. They mostly wait for other
/// processes; behind a full pool of any size, tasks would wait for those that never get an answer. No thread outlives its
/// work, so no idle thread ever wakes up. All priorities are treated alike.
class ThreadTasks final : public Tasks {
public:
    /// `prepare` is called first on the thread of each task. Threads of children inherit only what the system passes on from
    /// a thread to those that it starts.
    explicit ThreadTasks(std::function<void()> prepare = [] {}) : prepare_(std::move(prepare)) {}
    ThreadTasks(const ThreadTasks&) = delete;
    ThreadTasks& operator=(const ThreadTasks&) = delete;

    /// Waits until every task that was started has ended.
    ~ThreadTasks() override;

    void start(Priority priority, std::function<void()> work) override;
    void forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                 const std::function<void(std::size_t)>& finished) override;

private:
    const std::function<void()> prepare_;
    std::mutex mutex_;
    std::condition_variable allEnded_;
    std::size_t running_ = 0;
};

}  // namespace ovin
