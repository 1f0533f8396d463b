#pragma once

#include <QPoint>

#include "platform/Screens.h"
#include "platform/linux/displays/ScreenChanges.h"

namespace ovin {

/// The screens of the session as Qt sees them.
class QtScreens final : public Screens {
public:
    /// The primary screen, which has the menu bar: only the window manager knows where the keyboard focus is.
    [[nodiscard]] std::optional<Screen> main() const override;

    /// A change of `visibleFrame` counts as well, because docks follow a change of the screens a moment later.
    [[nodiscard]] std::unique_ptr<Observation> observeChanges(std::function<void()> handler) override;

    /// The screen at a point in global coordinates; nothing when there is none there.
    [[nodiscard]] std::optional<Screen> at(QPoint position) const;

private:
    ScreenChanges changes_;
};

}  // namespace ovin
