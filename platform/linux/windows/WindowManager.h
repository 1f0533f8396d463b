#pragma once

#include <QtGui/qwindowdefs.h>

class QWidget;
class QWindow;

/// What the toolkit cannot ask of an X11 window manager. Does nothing of it where there is no X server.
namespace ovin::WindowManager {

/// Brings a window that is shown in front of all others and gives it the keyboard, though another program has it. The user
/// asked for that, but often not with a key or a click that this program has seen: the item in the menu bar is clicked in
/// another program. A window manager that guards against programs that push to the front would only make the window blink.
void bringToFront(QWindow& window);

/// Shows the window of a widget first.
void bringToFront(QWidget& window);

/// On all desktops, from when it is shown next.
void putOnAllDesktops(QWidget& window);

/// Whether windows may let through what lies below them, since somebody composes them into one picture.
[[nodiscard]] bool composesWindows();

}  // namespace ovin::WindowManager
