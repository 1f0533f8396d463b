#pragma once

#include <cstdint>

#include "platform/Geometry.h"

namespace ovin {

/// Names a display for as long as it stays connected; a display that is plugged in again may get another id.
using DisplayID = std::uint32_t;

/// The displays of the user's session. Any thread.
class DisplayServices {
public:
    virtual ~DisplayServices() = default;

    /// The display with the menu bar, whose top left corner is the origin of the global coordinates.
    [[nodiscard]] virtual DisplayID mainDisplay() const = 0;

    /// The area of a display in global coordinates, in points; an empty rectangle at the origin when it is gone.
    [[nodiscard]] virtual Rect bounds(DisplayID display) const = 0;
};

}  // namespace ovin
