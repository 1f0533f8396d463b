#include "platform/linux/items/WatcherClaim.h"

#include <array>
#include <utility>

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// Between the looks at the queue. Bars ask for the name long after they have connected: first they load what they show.
constexpr std::array<std::chrono::milliseconds, 6> betweenLooks{100ms, 400ms, 1500ms, 4s, 10s, 30s};

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
    if (!owner_.empty() && !isOwner()) formerOwners_.insert(owner_);
    owner_ = owner;
    timer_.reset();
    if (owner_.empty()) takeAfterGrace();
    if (isOwner()) barMayCome();
}

void WatcherClaim::barMayCome() {
    // A look that is near is not put off, so that a busy bus does not put it off for ever.
    if (isBar_ || !isOwner() || (timer_ && looks_ == 0)) return;
    looks_ = 0;
    lookLater();
}

void WatcherClaim::rivalIsComing() {
    if (isOwner()) steps_.giveUp();
    // The grace begins anew.
    if (owner_.empty()) takeAfterGrace();
}

void WatcherClaim::disconnected(const std::string& program) {
    if (formerOwners_.erase(program) > 0 && owner_.empty()) takeAfterGrace();
}

void WatcherClaim::told(bool somebodyWaits) {
    if (somebodyWaits && isOwner()) steps_.giveUp();
}

void WatcherClaim::takeAfterGrace() {
    timer_ = queue_.after(grace, [this] { takeUnlessWanted(); });
}

void WatcherClaim::takeUnlessWanted() {
    std::erase_if(formerOwners_, [this](const std::string& program) { return !steps_.isConnected(program); });
    if (formerOwners_.empty()) takeNow();
}

void WatcherClaim::takeNow() {
    if (!steps_.take()) return;
    owner_ = self_;
    timer_.reset();
    barMayCome();
}

void WatcherClaim::lookLater() {
    timer_ = queue_.after(betweenLooks[looks_], [this] {
        steps_.askWhoWaits();
        if (++looks_ < betweenLooks.size()) lookLater();
    });
}

}  // namespace ovin
