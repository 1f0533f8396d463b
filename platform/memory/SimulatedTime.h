#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Tasks.h"

namespace ovin {

/// The time, the main queue and the tasks of the in-memory world, on one thread: equal histories give equal results.
///
/// The main queue, every task and every child of a task have a clock of their own. Waiting, for example for another process,
/// moves only the clock of the one that waits, so that parallel waits take as long as the longest of them. A task runs to
/// its end before the main queue goes on, but what it hands to the main queue arrives at its own time. Events of the world
/// (`happen`) occur as soon as the first clock has reached their time. The code that drives the simulation counts as the
/// main thread.
class SimulatedTime final : public Clock, public MainQueue, public Tasks {
public:
    using Duration = std::chrono::nanoseconds;

    SimulatedTime() = default;
    SimulatedTime(const SimulatedTime&) = delete;
    SimulatedTime& operator=(const SimulatedTime&) = delete;
    ~SimulatedTime() override = default;

    // Drive the simulation.

    /// Runs everything that is due within `duration`, in the order of due time and then of calls, and leaves the clock at
    /// the end of `duration`, or later when work on the main thread took longer. The time that tasks take does not move it.
    void advance(Duration duration);
    /// Runs until nothing is left to run, and leaves the clock where the last work ended. Does not return while work repeats
    /// itself.
    void runUntilIdle();
    /// Runs what is due next, if anything is; false when nothing was left.
    bool runNext();
    /// Runs `event` in the world, outside this program, after `delay`.
    void happen(Duration delay, Work event);
    /// Waits: moves the clock of the work that runs now.
    void wait(Duration duration);

    // Clock
    [[nodiscard]] std::chrono::nanoseconds now() const override { return now_; }

    // MainQueue
    void async(Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::nanoseconds delay, Work work) override;

    // Tasks
    void start(Priority priority, std::function<void()> work) override;
    void forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                 const std::function<void(std::size_t)>& finished) override;

private:
    enum class Kind { mainWork, task, event };
    struct Entry {
        Kind kind;
        Work work;
    };
    /// The due time, and a running number that keeps the order of calls.
    using Key = std::pair<Duration, std::uint64_t>;
    class PendingTimer;

    Key add(Duration time, Kind kind, Work work);
    void run(Duration time, const Entry& entry);
    void runEventsUpTo(Duration time);

    Duration now_{0};
    /// The main thread is busy until then.
    Duration mainThreadFree_{0};
    /// The latest time of any clock.
    Duration furthest_{0};
    /// Whether work from the agenda is running.
    bool isRunning_ = false;
    std::uint64_t nextNumber_ = 0;
    std::map<Key, Entry> agenda_;
    /// Expires for timers that outlive the simulation.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace ovin
