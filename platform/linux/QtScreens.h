#pragma once

#include <QPoint>

#include "platform/Screens.h"

namespace ovin {

/// The screens of the session as Qt sees them.
class QtScreens final : public Screens {
public:
    [[nodiscard]] std::optional<Screen> main() const override;
    [[nodiscard]] std::unique_ptr<Observation> observeChanges(std::function<void()> handler) override;

    /// The screen at a point in global coordinates; nothing when there is none there.
    [[nodiscard]] std::optional<Screen> at(QPoint position) const;
};

}  // namespace ovin
