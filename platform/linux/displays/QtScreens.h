#pragma once

#include <QPoint>

#include "platform/Screens.h"
#include "platform/linux/displays/ScreenChanges.h"

namespace ovin {

/// The screens of the session as Qt sees them.
class QtScreens final : public Screens {
public:
    /// The primary one, which has the menu bar: only the window manager knows which window of another program has the focus.
    [[nodiscard]] std::optional<Screen> main() const override;

    /// A change of what docks leave of a screen counts as well, since they follow the screens a moment later.
    [[nodiscard]] std::unique_ptr<Observation> observeChanges(std::function<void()> handler) override;

    /// The screen at a point in global coordinates; nothing when there is none there.
    [[nodiscard]] std::optional<Screen> at(QPoint position) const;

private:
    ScreenChanges changes_;
};

}  // namespace ovin
