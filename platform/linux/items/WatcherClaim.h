#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "platform/MainQueue.h"

namespace ovin {

/// Decides when this program is the session's watcher of status items: only while no other program is or wants to be it.
///
/// Bars ask for the watcher's name in three ways. Some replace its owner. Some wait in the bus's queue for it, of which the
/// bus tells nobody: so the queue is looked at after whatever may have come from a bar. And some ask once, or not at all
/// while the name is taken: so the name is free when one of these is about to ask, and is left for a while to a program that
/// has had it before and still runs. Main thread only.
class WatcherClaim {
public:
    /// How long the name must have been free before this program takes it.
    static constexpr std::chrono::seconds grace{3};
    /// How long when a rival runs: it may be busy, or be switched on again.
    static constexpr std::chrono::seconds longestGrace{60};

    /// When a free name is taken for the first time. A bar takes it at once and keeps it from those who wait: it is replaced
    /// only by those who ask for that.
    enum class Begin { afterGrace, atOnce, asBar };

    /// What is done on the bus.
    struct Steps {
        /// Asks for the name without replacing its owner and without waiting for it; true when this program owns it now.
        std::function<bool()> take;
        std::function<void()> giveUp;
        /// Asks who waits for the name; `told` gets the answer.
        std::function<void()> askWhoWaits;
        /// Whether a program, by its unique name, is still connected.
        std::function<bool(const std::string& program)> isConnected;
    };

    /// `self` is this program's unique name. `queue` must outlive this object.
    WatcherClaim(MainQueue& queue, std::string self, Steps steps);

    /// Begins, with the unique name of the present owner, which is empty when there is none.
    void begin(const std::string& owner, Begin begin);

    [[nodiscard]] bool isOwner() const { return owner_ == self_; }

    // What happens on the bus.

    void ownerChanged(const std::string& owner);
    /// A program did what a bar does when it starts, perhaps some time before it asks for the name. Programs that end within
    /// a second are no bars: scripts connect every second.
    void barMayCome(const std::string& program);
    /// A program is about to ask for the name that will not ask again when it is refused. If it is named, the name is left
    /// to it until `isNoRival`, but no longer than the longest grace.
    void rivalIsComing(const std::string& program = {});
    /// A program has disconnected, or has started without asking for the name.
    void isNoRival(const std::string& program);
    /// Whether another program waits for the name.
    void told(bool somebodyWaits);

private:
    void takeAfterGrace();
    void takeUnlessWanted();
    void takeNow();
    void stopLooking();
    void look();

    MainQueue& queue_;
    const std::string self_;
    const Steps steps_;
    std::string owner_;
    /// Programs that have been the watcher and may be it again, or are about to ask.
    std::set<std::string> rivals_;
    /// What may be bars and has not stayed for a second.
    std::set<std::string> newcomers_;
    std::unique_ptr<MainQueue::Timer> settling_;
    /// While the name is free: the grace. While this program owns it: the next look at the queue.
    std::unique_ptr<MainQueue::Timer> timer_;
    std::size_t looks_ = 0;
    bool isBar_ = false;
};

}  // namespace ovin
