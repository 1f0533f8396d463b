#pragma once

#include <QtGui/qwindowdefs.h>

class QWidget;
class QWindow;

/// Requests to an X11 window manager that the toolkit cannot make. No effect without an X server. Main thread only.
namespace ovin::WindowManager {

/// Brings a shown window in front of all others and gives it the keyboard, even when another program has it. The toolkit's
/// request would not do: the user often asks by a click that this program has not seen, because the menu bar is another
/// program's, so a window manager that protects the focus would only make the window blink.
void bringToFront(QWindow& window);

/// The same for a widget's window, which is shown first.
void bringToFront(QWidget& window);

/// Shows a window on all desktops.
void showOnAllDesktops(QWidget& window);

/// Whether windows may be translucent, because a compositor runs.
[[nodiscard]] bool composesWindows();

}  // namespace ovin::WindowManager
