#pragma once

#include <QtGlobal>

#include "platform/Views.h"

namespace ovin {

/// A widget that shows one view.
class ViewWidget {
public:
    ViewWidget() = default;
    ViewWidget(const ViewWidget&) = delete;
    ViewWidget& operator=(const ViewWidget&) = delete;
    virtual ~ViewWidget() = default;

    /// What it shows, read from its own state.
    [[nodiscard]] virtual decltype(View::content) content() const = 0;
};

/// A length as a view states it. Widgets have whole pixels: as long as the widget has those nearest to the length that was
/// asked for, it has that length; otherwise somebody has changed it.
[[nodiscard]] inline double readBackLength(double asked, int pixels) { return qRound(asked) == pixels ? asked : pixels; }

}  // namespace ovin
