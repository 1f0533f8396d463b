// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <string>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// What every window needs that is made in code: it belongs to whoever made it alone, closed or open, and the system does
/// not bring it back at the next launch. Main thread only, as is all below.
void keepToItsOwner(NSWindow* window);

/// A title bar that says nothing, and that the content covers; `window` has one, and `NSWindowStyleMaskFullSizeContentView`.
/// The title is for lists of windows.
void coverTitleBar(NSWindow* window, const std::string& title);

/// On every space and beside full-screen windows, at `level`, whichever program is active: Ovin hardly ever is.
void showOverPrograms(NSPanel* panel, NSWindowLevel level);

}  // namespace ovin

NS_ASSUME_NONNULL_END
