#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "discovery/AppInfo.h"
#include "discovery/MenuBarGeometry.h"
#include "organize/DisplayWidener.h"
#include "platform/Platform.h"

namespace ovin {

/// What came of an attempt to begin a session.
struct BeginResult {
    enum class Outcome {
        /// The menu bar cannot be given more room; `text` tells the user why.
        unavailable,
        /// The display is widened, and the session is active.
        started,
        /// Every item is drawn already; nothing was changed.
        notNeeded,
        /// The menu bar may not be read, and is not widened without that; the user is asked whether it may.
        notPermitted,
        /// Another begin is under way or has led to an active session, or an end came in between.
        superseded,
    };

    Outcome outcome = Outcome::superseded;
    /// For the user, where the session is unavailable.
    std::string text = {};

    friend bool operator==(const BeginResult&, const BeginResult&) = default;
};

/// One episode of organizing the menu bar: finds out whether items are missing, widens the display, checks a moment later
/// whether all of them are drawn now, and puts the display back in the end, or as soon as that is possible.
///
/// One per program, for as long as it runs. Main thread only. Whatever outlives a call holds the session weakly; what is
/// pending when the session goes does nothing.
class ArrangeSession : public std::enable_shared_from_this<ArrangeSession> {
public:
    /// Everything behind `platform`, and `widener`, must outlive the session.
    [[nodiscard]] static std::shared_ptr<ArrangeSession> create(const Platform& platform, DisplayWidener& widener);

    ArrangeSession(const ArrangeSession&) = delete;
    ArrangeSession& operator=(const ArrangeSession&) = delete;
    ~ArrangeSession();

    /// Never empty. Called on the main thread, at most once.
    using Completion = std::function<void(const BeginResult&)>;

    /// Begins a session. The completion is called within this call when another session is in the way, and later otherwise;
    /// never when the session is ended, or gone, after the display was widened and before that was reported.
    void begin(Completion completion);

    /// Ends the session, or cancels one that is about to start, and puts the display back: now, or after the change of the
    /// screens that makes it possible. Also undoes what an earlier run of the program left behind.
    void end();

    /// The display is widened for a session that has not been ended.
    [[nodiscard]] bool isActive() const { return isActive_; }

    /// Called once in a session, about two seconds after the display was widened, when some items are still not drawn; may
    /// be empty.
    std::function<void()> onItemsStillDoNotFit;

private:
    /// What the menu bar looked like before the session.
    struct Findings {
        MenuBarGeometry::Reading::Outcome reading;
        bool allItemsFit = false;
        /// Absent when the geometry could not be had.
        std::optional<double> itemsWidth = {};
    };

    ArrangeSession(const Platform& platform, DisplayWidener& widener);
    [[nodiscard]] static Findings lookAtMenuBar(const Platform& platform, const std::vector<AppInfo>& apps);

    /// A function for later that calls `step` on this object, if it exists by then and has not been ended in between.
    template <typename Step>
    [[nodiscard]] auto unlessEnded(Step step);

    /// Looks at the menu bar, again after a while if that breaks off, so many times at most.
    void look(std::uint64_t expected, int times);
    void haveLooked(std::uint64_t expected, int timesLeft, const Findings& findings);
    void finishStarting(std::uint64_t expected, const Findings& findings);
    void widen(const Findings& findings);
    void settle();
    void reportStart();
    void report(const BeginResult& result);
    void startFitCheck();
    void finishFitCheck(bool everythingFits);
    void retryRestoreOnDisplayChange();

    const Platform platform_;
    DisplayWidener& widener_;
    bool isActive_ = false;
    bool isStarting_ = false;
    /// Counts the ends. If a step finds another number than when it was scheduled, its session is over.
    std::uint64_t generation_ = 0;
    /// Present while a failed restore waits for the screens to change.
    std::unique_ptr<Screens::Observation> restoreObservation_;
    /// Of the latest begin, until it has been called. Kept here and not in the task, because the task must not destroy it.
    Completion completion_;
    /// Of the step that comes next.
    std::unique_ptr<MainQueue::Timer> timer_;
};

}  // namespace ovin
