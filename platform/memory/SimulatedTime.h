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
/// The main queue, every task and every child of a task have a clock of their own. Waiting, as a request to another process
/// does, moves only the clock of whoever waits, so that things that happen at once take as long as the longest of them. A
/// task runs to its end before the main queue goes on, but what it hands to the main queue arrives at its own time. Things
/// that happen in the world by themselves (`happen`) happen as soon as the first clock has reached their time. Whoever
/// drives the simulation from outside does so on the main thread.
class SimulatedTime final : public Clock, public MainQueue, public Tasks {
public:
    using Duration = std::chrono::nanoseconds;

    SimulatedTime() = default;
    SimulatedTime(const SimulatedTime&) = delete;
    SimulatedTime& operator=(const SimulatedTime&) = delete;
    ~SimulatedTime() override = default;

    // What drives the simulation.

    /// Runs everything that is due within `duration`, in the order of time and then of asking, and leaves the clock there:
    /// later only when work on the main thread took longer. How long a task takes does not move it.
    void advance(Duration duration);
    /// Runs until nothing is left to run, and leaves the clock where the last of all ended. Whatever repeats itself for ever
    /// never ends.
    void runUntilIdle();
    /// Runs what is due next, if anything is; false when nothing was left.
    bool runNext();
    /// Lets something happen in the world, outside this program, after `delay`.
    void happen(Duration delay, Work event);
    /// Waits: moves the clock of whoever runs now.
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
    /// Due time, and a running number that keeps the order of asking.
    using Key = std::pair<Duration, std::uint64_t>;
    class PendingTimer;

    Key add(Duration time, Kind kind, Work work);
    void run(Duration time, const Entry& entry);
    void runEventsUpTo(Duration time);

    Duration now_{0};
    /// The main thread is busy until then.
    Duration mainThreadFree_{0};
    /// The furthest that any clock has come.
    Duration furthest_{0};
    /// Whether something runs that was started from the agenda.
    bool isRunning_ = false;
    std::uint64_t nextNumber_ = 0;
    std::map<Key, Entry> agenda_;
    /// Tells timers that outlive the simulation.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace ovin
