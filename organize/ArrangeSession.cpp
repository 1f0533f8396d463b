#include "organize/ArrangeSession.h"

#include <chrono>
#include <exception>
#include <string>
#include <utility>

#include "discovery/ItemProvider.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// How long the system takes to lay out the menu bar after a display has changed its mode.
constexpr auto settleDelay = 400ms;
constexpr auto fitCheckDelay = 1500ms;

/// How often, and how long after the last time, a layout is asked for whose reading breaks off: long enough for a starved
/// machine, and for a session that is just starting.
constexpr int mostLooks = 10;
constexpr auto lookAgainDelay = 500ms;

/// What application menus and the space between items take beside the items themselves.
constexpr double widthBesideItems = 560;
constexpr double widthWithoutGeometry = 1960;

/// Discovery runs whatever the geometry says, so that `OVIN_DEBUG` tells what is missing.
bool everythingFits(const Platform& platform, const std::vector<AppInfo>& apps) {
    const auto snapshot = MenuBarGeometry::snapshot(platform);
    const bool isAllDrawn = !snapshot || snapshot->everythingIsDrawn();
    const bool isNothingMissing = ItemProvider::discoverItems(platform, apps).empty();
    return isAllDrawn && isNothingMissing;
}

BeginResult unavailable(std::string text) { return {BeginResult::Outcome::unavailable, std::move(text)}; }

}  // namespace

std::shared_ptr<ArrangeSession> ArrangeSession::create(const Platform& platform, DisplayWidener& widener) {
    return std::shared_ptr<ArrangeSession>(new ArrangeSession(platform, widener));
}

ArrangeSession::ArrangeSession(const Platform& platform, DisplayWidener& widener) : platform_(platform), widener_(widener) {}

ArrangeSession::~ArrangeSession() = default;

void ArrangeSession::begin(Completion completion) {
    if (isActive_ || isStarting_) return completion({BeginResult::Outcome::superseded});
    isStarting_ = true;
    completion_ = std::move(completion);
    look(generation_, mostLooks);
}

void ArrangeSession::look(std::uint64_t expected, int times) {
    platform_.tasks.start(Tasks::Priority::userInitiated, [platform = platform_, weak = weak_from_this(), expected, times,
                                                           apps = ItemProvider::snapshotApps(platform_)] {
        platform.mainQueue.async([weak, expected, times, findings = lookAtMenuBar(platform, apps)] {
            if (const auto self = weak.lock()) self->haveLooked(expected, times - 1, findings);
        });
    });
}

void ArrangeSession::haveLooked(std::uint64_t expected, int timesLeft, const Findings& findings) {
    const bool hasBrokenOff = findings.reading == MenuBarGeometry::Reading::Outcome::brokenOff;
    // Where a display is widened without a layout too, nobody waits for one.
    const bool isAwaited = hasBrokenOff && platform_.resources.words().withoutLayout.has_value();
    if (!isAwaited || timesLeft == 0 || generation_ != expected) return finishStarting(expected, findings);
    timer_ = platform_.mainQueue.after(lookAgainDelay, [weak = weak_from_this(), expected, timesLeft] {
        if (const auto self = weak.lock()) self->look(expected, timesLeft);
    });
}

ArrangeSession::Findings ArrangeSession::lookAtMenuBar(const Platform& platform, const std::vector<AppInfo>& apps) {
    const auto [reading, snapshot] = MenuBarGeometry::read(platform);
    if (!snapshot) return {reading};
    // What the geometry calls drawn is not believed alone: items may be missing from it altogether.
    const bool allItemsFit = snapshot->everythingIsDrawn() && ItemProvider::discoverItems(platform, apps).empty();
    return {reading, allItemsFit, snapshot->totalItemsWidth()};
}

template <typename Step>
auto ArrangeSession::unlessEnded(Step step) {
    return [weak = weak_from_this(), expected = generation_, step](const auto&... results) {
        const auto self = weak.lock();
        if (self && self->generation_ == expected) (*self.*step)(results...);
    };
}

void ArrangeSession::finishStarting(std::uint64_t expected, const Findings& findings) {
    isStarting_ = false;
    if (generation_ != expected) return report({BeginResult::Outcome::superseded});
    if (findings.allItemsFit) return report({BeginResult::Outcome::notNeeded});
    widen(findings);
}

void ArrangeSession::widen(const Findings& findings) {
    const Words& words = platform_.resources.words();
    if (!platform_.displays.canSwitchModes()) return report(unavailable(words.fixedModes));
    if (words.withoutLayout && findings.reading == MenuBarGeometry::Reading::Outcome::noAgent)
        return report(unavailable(*words.withoutLayout));
    if (words.withoutLayout && findings.reading == MenuBarGeometry::Reading::Outcome::notPermitted) {
        ItemProvider::requestTrust(platform_);
        return report({BeginResult::Outcome::notPermitted});
    }
    const double needed = findings.itemsWidth ? *findings.itemsWidth + widthBesideItems : widthWithoutGeometry;
    switch (widener_.widen(needed)) {
        case WidenResult::widened:
            return settle();
        case WidenResult::mirrored:
            return report(unavailable(words.mirrored));
        case WidenResult::noSuitableMode:
            return report(
                unavailable("This display has no wider resolution, so some items stay out of reach. An external "
                            "display, or quitting a few menu bar apps, makes room."));
        case WidenResult::failed:
            return report(unavailable(words.refused));
    }
}

void ArrangeSession::settle() {
    isActive_ = true;
    timer_ = platform_.mainQueue.after(settleDelay, unlessEnded(&ArrangeSession::reportStart));
}

void ArrangeSession::reportStart() {
    // Set before the report, because the report may end the session.
    timer_ = platform_.mainQueue.after(fitCheckDelay, unlessEnded(&ArrangeSession::startFitCheck));
    report({BeginResult::Outcome::started});
}

void ArrangeSession::report(const BeginResult& result) {
    // Taken away first, because the completion may begin a new session.
    const auto completion = std::exchange(completion_, nullptr);
    completion(result);
}

void ArrangeSession::startFitCheck() {
    platform_.tasks.start(Tasks::Priority::utility,
                          [platform = platform_, finish = unlessEnded(&ArrangeSession::finishFitCheck),
                           apps = ItemProvider::snapshotApps(platform_)] {
                              platform.mainQueue.async([finish, fits = everythingFits(platform, apps)] { finish(fits); });
                          });
}

void ArrangeSession::finishFitCheck(bool everythingFits) {
    if (everythingFits) return;
    // A copy, because the handler may set another one.
    if (const auto handler = onItemsStillDoNotFit) handler();
}

void ArrangeSession::end() {
    // After an overflow a step of an ended session could pass for one of the next.
    if (++generation_ == 0) std::terminate();
    isActive_ = false;
    if (widener_.restore()) {
        restoreObservation_.reset();
    } else if (!restoreObservation_) {
        retryRestoreOnDisplayChange();
    }
}

void ArrangeSession::retryRestoreOnDisplayChange() {
    restoreObservation_ = platform_.screens.observeChanges([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (self && self->widener_.restore()) self->restoreObservation_.reset();
    });
}

}  // namespace ovin
