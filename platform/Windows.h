#pragma once

#include <functional>
#include <memory>

#include "platform/Geometry.h"
#include "platform/Views.h"

namespace ovin {

/// A panel at the level of the status bar: borderless, clear, with a shadow, on every space and beside full-screen windows.
/// It never takes the focus from the application that the user works with, and stays when that one changes. Goes when it is
/// destroyed. Main thread only.
class LedgePanel {
public:
    LedgePanel() = default;
    LedgePanel(const LedgePanel&) = delete;
    LedgePanel& operator=(const LedgePanel&) = delete;
    virtual ~LedgePanel() = default;

    /// Shows `content`, in place of what was shown before, at `frame` in global coordinates.
    virtual void show(const View& content, const Rect& frame) = 0;
};

/// Makes windows. Main thread only.
class Windows {
public:
    virtual ~Windows() = default;

    /// The size that a view takes when nothing holds it back.
    [[nodiscard]] virtual Size fittingSize(const View& view) const = 0;

    /// A panel that is not shown yet. `clicked` is called with the tag of a button that the user clicked; it may destroy the
    /// panel.
    [[nodiscard]] virtual std::unique_ptr<LedgePanel> makeLedgePanel(std::function<void(int tag)> clicked) = 0;
};

}  // namespace ovin
