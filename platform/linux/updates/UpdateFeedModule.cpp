// What LoadedUpdateFeed loads.

#include "platform/linux/updates/QtUpdateFeed.h"

/// The caller owns the feed.
extern "C" __attribute__((visibility("default"))) ovin::UpdateFeed* ovinUpdateFeed() { return new ovin::QtUpdateFeed; }
