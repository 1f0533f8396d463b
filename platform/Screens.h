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
    /// What menu bar and docks leave of it.
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

    /// Calls `handler` on the main thread after every change of the screens: one is plugged in, unplugged, moved or changes
    /// its mode. Until the observation is destroyed, which the handler may do.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeChanges(std::function<void()> handler) = 0;
};

}  // namespace ovin
