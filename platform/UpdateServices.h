#pragma once

#include "platform/Downloads.h"
#include "platform/UpdateFeed.h"
#include "platform/UpdatePackages.h"
#include "platform/WallClock.h"

namespace ovin {

/// What an update framework of Ovin's own is made from, for worlds that have none. Copied freely.
struct UpdateServices {
    WallClock& wallClock;
    Downloads& downloads;
    FeedReader& reader;
    UpdatePackages& packages;
};

}  // namespace ovin
