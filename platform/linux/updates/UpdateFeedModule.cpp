// What LoadedUpdateFeed loads.

#include <string_view>

#include "platform/linux/updates/QtUpdateFeed.h"

/// The caller owns the feed. Null for a program of another version, whose interfaces may differ.
extern "C" __attribute__((visibility("default"))) ovin::UpdateFeed* ovinUpdateFeed(const char* version) {
    return std::string_view(version) == OVIN_VERSION ? new ovin::QtUpdateFeed : nullptr;
}
