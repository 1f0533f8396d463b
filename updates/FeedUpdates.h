#pragma once

#include <memory>

#include "platform/Platform.h"
#include "platform/UpdateFeed.h"
#include "platform/WallClock.h"

namespace ovin {

/// An update framework of Ovin's own, for a world without one. It tells of newer versions and leads to their page;
/// installing them is the business of whoever installed the running one. Main thread only.
///
/// A check that nobody asked for stays silent, unless there is a newer version: then a small panel tells of it. Whoever asks
/// gets one answer, whatever it is.
class FeedUpdates final : public UpdateFramework {
public:
    /// All of these, and everything behind `platform`, must outlive this object and its controllers. The platform's own
    /// update framework is not used.
    FeedUpdates(const Platform& platform, UpdateFeed& feed, WallClock& clock)
        : platform_(platform), feed_(feed), clock_(clock) {}

    /// Begins the scheduled checks, after the current work of the main queue. There are none if neither the build nor the
    /// delegate names a feed.
    [[nodiscard]] std::unique_ptr<Controller> start(Delegate delegate) override;

private:
    const Platform platform_;
    UpdateFeed& feed_;
    WallClock& clock_;
};

}  // namespace ovin
