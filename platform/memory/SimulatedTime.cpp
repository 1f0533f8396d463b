#include "platform/memory/SimulatedTime.h"

#include <algorithm>
#include <vector>

namespace ovin {

class SimulatedTime::PendingTimer final : public Timer {
public:
    PendingTimer(SimulatedTime& time, Key key) : time_(time), key_(key), alive_(time.alive_) {}
    ~PendingTimer() override {
        // Extracted before it is destroyed, because the work may hold another timer, whose destructor searches the agenda.
        if (!alive_.expired()) const auto cancelled = time_.agenda_.extract(key_);
    }

private:
    SimulatedTime& time_;
    Key key_;
    std::weak_ptr<const bool> alive_;
};

void SimulatedTime::advance(Duration duration) {
    const Duration target = now_ + std::max(duration, Duration::zero());
    while (!agenda_.empty() && agenda_.begin()->first.first <= target) runNext();
    now_ = std::max(target, mainThreadFree_);
}

void SimulatedTime::runUntilIdle() {
    while (runNext()) {
    }
    now_ = std::max(now_, furthest_);
}

bool SimulatedTime::runNext() {
    if (agenda_.empty()) return false;
    auto node = agenda_.extract(agenda_.begin());
    run(node.key().first, node.mapped());
    return true;
}

void SimulatedTime::happen(Duration delay, Work event) {
    add(now_ + std::max(delay, Duration::zero()), Kind::event, std::move(event));
}

void SimulatedTime::wait(Duration duration) {
    const Duration target = now_ + std::max(duration, Duration::zero());
    runEventsUpTo(target);
    now_ = target;
    if (!isRunning_) mainThreadFree_ = std::max(mainThreadFree_, now_);
}

void SimulatedTime::async(Work work) { add(now_, Kind::mainWork, std::move(work)); }

std::unique_ptr<MainQueue::Timer> SimulatedTime::after(std::chrono::nanoseconds delay, Work work) {
    const Key key = add(now_ + std::max(delay, Duration::zero()), Kind::mainWork, std::move(work));
    return std::make_unique<PendingTimer>(*this, key);
}

void SimulatedTime::start(Priority, std::function<void()> work) { add(now_, Kind::task, std::move(work)); }

void SimulatedTime::forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                            const std::function<void(std::size_t)>& finished) {
    const Duration start = now_;
    std::vector<std::pair<Duration, std::size_t>> ends;
    ends.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        now_ = start;
        child(index);
        ends.emplace_back(now_, index);
    }
    std::sort(ends.begin(), ends.end());
    now_ = start;
    for (const auto& [end, index] : ends) {
        now_ = std::max(now_, end);
        finished(index);
    }
}

SimulatedTime::Key SimulatedTime::add(Duration time, Kind kind, Work work) {
    const Key key{time, nextNumber_++};
    agenda_.emplace(key, Entry{kind, std::move(work)});
    return key;
}

void SimulatedTime::run(Duration time, const Entry& entry) {
    const bool isOnMainThread = entry.kind == Kind::mainWork;
    now_ = time;
    if (isOnMainThread && mainThreadFree_ > time) {
        runEventsUpTo(mainThreadFree_);
        now_ = mainThreadFree_;
    }
    const bool wasRunning = std::exchange(isRunning_, true);
    entry.work();
    isRunning_ = wasRunning;
    furthest_ = std::max(furthest_, now_);
    if (isOnMainThread) mainThreadFree_ = now_;
    // The simulation is driven on the main thread, whose clock tasks do not move.
    now_ = std::max(time, mainThreadFree_);
}

void SimulatedTime::runEventsUpTo(Duration time) {
    while (true) {
        const auto due = std::find_if(agenda_.begin(), agenda_.end(),
                                      [](const auto& pending) { return pending.second.kind == Kind::event; });
        if (due == agenda_.end() || due->first.first > time) return;
        auto node = agenda_.extract(due);
        now_ = std::max(now_, node.key().first);
        node.mapped().work();
    }
}

}  // namespace ovin
