#pragma once

class QWindow;

namespace ovin {

/// Asks the window manager to bring a window to the front and to give it the keyboard, as the user's own wish: this program
/// is told of clicks over the bus, and window managers would take an ordinary request, with the time of the last event that
/// the X server sent to it, for one that steals the focus. Does nothing without an X server.
void activateWindow(QWindow& window);

}  // namespace ovin
