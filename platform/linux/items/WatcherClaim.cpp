#include "platform/linux/items/WatcherClaim.h"

#include <array>
#include <utility>

namespace ovin {
namespace {

using namespace std::chrono_literals;

constexpr auto settlingTime = 1s;
/// Between the looks at the queue. Bars ask for the name long after they have connected: first they load what they show.
constexpr std::array betweenLooks{3s, 10s, 30s};

}  // namespace

WatcherClaim::WatcherClaim(MainQueue& queue, std::string self, Steps steps)
    : queue_(queue), self_(std::move(self)), steps_(std::move(steps)) {}

void WatcherClaim::begin(const std::string& owner, Begin begin) {
    owner_ = owner;
    isBar_ = begin == Begin::asBar;
    if (!owner_.empty()) return;
    begin == Begin::afterGrace ? takeAfterGrace() : takeNow();
}

void WatcherClaim::ownerChanged(const std::string& owner) {
    if (owner == owner_) return;
    if (!owner_.empty() && !isOwner()) rivals_.insert(owner_);
    owner_ = owner;
    stopLooking();
    if (owner_.empty()) takeAfterGrace();
    if (isOwner()) barMayCome(self_);
}

void WatcherClaim::barMayCome(const std::string& program) {
    if (isBar_ || !isOwner()) return;
    newcomers_.insert(program);
    // Later ones do not put the look off, so that a busy bus does not put it off for ever.
    if (settling_) return;
    settling_ = queue_.after(settlingTime, [this] {
        stopLooking();
        looks_ = 0;
        look();
    });
}

void WatcherClaim::rivalIsComing(const std::string& program) {
    if (isBar_) return;
    if (!program.empty()) rivals_.insert(program);
    if (isOwner()) steps_.giveUp();
    // The grace begins anew.
    if (owner_.empty()) takeAfterGrace();
}

void WatcherClaim::isNoRival(const std::string& program) {
    newcomers_.erase(program);
    if (newcomers_.empty()) settling_.reset();
    if (rivals_.erase(program) > 0 && owner_.empty()) takeAfterGrace();
}

void WatcherClaim::told(bool somebodyWaits) {
    if (somebodyWaits && isOwner()) steps_.giveUp();
}

void WatcherClaim::takeAfterGrace() {
    timer_ = queue_.after(grace, [this] { takeUnlessWanted(); });
}

void WatcherClaim::takeUnlessWanted() {
    std::erase_if(rivals_, [this](const std::string& program) { return !steps_.isConnected(program); });
    if (rivals_.empty()) return takeNow();
    timer_ = queue_.after(longestGrace - grace, [this] {
        rivals_.clear();
        takeNow();
    });
}

void WatcherClaim::takeNow() {
    if (!steps_.take()) {
        // Who has the name instead is told at once, and ends this. Where the bus did not answer, nobody has it.
        if (owner_.empty()) takeAfterGrace();
        return;
    }
    owner_ = self_;
    stopLooking();
    barMayCome(self_);
}

void WatcherClaim::stopLooking() {
    newcomers_.clear();
    settling_.reset();
    timer_.reset();
}

void WatcherClaim::look() {
    steps_.askWhoWaits();
    if (looks_ < betweenLooks.size()) timer_ = queue_.after(betweenLooks[looks_++], [this] { look(); });
}

}  // namespace ovin
