#pragma once

#include <QtGui/qwindowdefs.h>
#include <QRect>

namespace ovin {

/// Tells the window manager that a window is a dock on all desktops. To be called before the window is shown.
void makeDock(WId window);

/// Keeps other windows away from a dock at the top. `frame` is the dock's in pixels of the X server.
void reserveTop(WId window, const QRect& frame);

}  // namespace ovin
