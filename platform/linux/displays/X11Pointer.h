#pragma once

namespace ovin {

/// Whether the user holds down a button of the mouse at this moment, wherever the pointer is. False without an X server.
[[nodiscard]] bool isMouseButtonDown();

}  // namespace ovin
