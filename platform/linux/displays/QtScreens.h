#pragma once

#include <optional>

#include "platform/Screens.h"
#include "platform/linux/displays/ScreenChanges.h"

namespace ovin {

/// The screens of the session as Qt sees them. Their visible frames are what the docks of the moment leave, because the
/// toolkit looks at the work area alone, which window managers tell late, and at nothing with several screens.
class QtScreens final : public Screens {
public:
    /// The primary screen, which has the menu bar: only the window manager knows where the keyboard focus is.
    [[nodiscard]] std::optional<Screen> main() const override;

    /// A change of `visibleFrame` counts as well, because docks follow a change of the screens a moment later.
    [[nodiscard]] std::unique_ptr<Observation> observeChanges(std::function<void()> handler) override;

    /// The screen of a status item that was last clicked at a point in pixels of the X server, with the bar that is there.
    /// Where the point tells no bar, the only bar that there is has the item. Nothing when neither point nor bar are known.
    [[nodiscard]] std::optional<Screen> ofItem(std::optional<Point> clicked) const;

private:
    ScreenChanges changes_;
};

}  // namespace ovin
