#pragma once

#include <optional>
#include <vector>

#include "platform/DisplayServices.h"

namespace ovin {

/// The mode that makes room in the menu bar: of the modes usable for the desktop that are wider in points than `current`,
/// the narrowest that is at least `neededWidth` points wide, or the widest of all when none is. Of equally wide modes one of
/// the shape 16:10 comes first, then the one with more pixels, then the one listed first. A 16:10 mode as wide as the
/// current one counts as wider when the current one has another shape. Nothing when no mode is wider.
[[nodiscard]] std::optional<DisplayMode> chooseWiderMode(const std::vector<DisplayMode>& modes, const DisplayMode& current,
                                                         double neededWidth);

}  // namespace ovin
