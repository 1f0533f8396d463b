#pragma once

#include "platform/Screens.h"

namespace ovin {

/// The part of a screen that the ledge may cover: its visible frame without the bar.
[[nodiscard]] Rect ledgeRoom(const Screen& screen);

/// Where the top left corner of a ledge of this size goes. Where the item's bar is known, the ledge stands beside that bar,
/// at the place of the click, moved along the bar so that it stays on the screen. Elsewhere it hangs under the menu bar at
/// the right edge of the screen.
[[nodiscard]] Point ledgeOrigin(const Screen& screen, Size size);

}  // namespace ovin
