#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/Geometry.h"
#include "platform/Handle.h"

namespace ovin {

/// A screen at one moment, in global coordinates: the origin at the top left of the main display, y growing downwards.
struct Screen {
    Rect frame;
    /// The frame without the menu bar and docks.
    Rect visibleFrame;

    friend bool operator==(const Screen&, const Screen&) = default;
};

/// The screens of the session. Main thread only.
class Screens {
public:
    /// Ends the observing when destroyed.
    using Observation = Handle;

    virtual ~Screens() = default;

    /// The screen that the user works on: that of the window with the keyboard focus or, where the system does not tell, the
    /// one with the menu bar. Nothing while no screen is connected.
    [[nodiscard]] virtual std::optional<Screen> main() const = 0;

    /// Calls `handler` on the main thread whenever a screen has been plugged in, unplugged or moved or has changed its mode,
    /// until the observation is destroyed. The handler may destroy it.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeChanges(std::function<void()> handler) = 0;
};

}  // namespace ovin
