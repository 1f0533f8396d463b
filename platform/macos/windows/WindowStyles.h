// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <string>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// What every window made in code needs: only its maker owns it, open or closed, and the system does not restore it at the
/// next launch. Main thread only, as is all below.
void keepToItsOwner(NSWindow* window);

/// Empties the title bar and lets the content cover it; `window` must have one, and `NSWindowStyleMaskFullSizeContentView`.
/// `title` is for lists of windows.
void coverTitleBar(NSWindow* window, const std::string& title);

/// Shows a panel on every space and beside full-screen windows, at `level`, even when another program is active.
void showOverPrograms(NSPanel* panel, NSWindowLevel level);

}  // namespace ovin

NS_ASSUME_NONNULL_END
