#pragma once

#include <vector>

#include "platform/DisplayServices.h"

namespace ovin {

/// Displays as the test lists them; the first is the main one.
class MemoryDisplays final : public DisplayServices {
public:
    struct Display {
        DisplayID id = 0;
        Rect bounds;
    };

    /// Set before anybody reads; not guarded.
    std::vector<Display> displays{{1, {{0, 0}, {1512, 982}}}};

    [[nodiscard]] DisplayID mainDisplay() const override { return displays.empty() ? 0 : displays.front().id; }

    [[nodiscard]] Rect bounds(DisplayID display) const override {
        for (const Display& candidate : displays) {
            if (candidate.id == display) return candidate.bounds;
        }
        return {};
    }
};

}  // namespace ovin
