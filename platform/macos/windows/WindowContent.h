// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Geometry.h"
#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Makes a view fill a window, in place of what was there. The button that has the keyboard keeps it, as the one with the
/// same tag. What was there stays alive as long as the user holds down a button of it.
void setContent(NSWindow* window, NSView* view);

/// The same, in the size that the view takes, which is returned.
Size fitContent(NSWindow* window, const View& view, OvinClickTarget* target);

/// The same; the top left corner of the window stays where it is.
void replaceContent(NSWindow* window, const View& view, OvinClickTarget* target);

/// Scrolls the page that a window shows to its end, if it has one.
void scrollToEnd(NSWindow* window);

/// Puts a window away for good. It stays alive until AppKit is done with it: this may be called in the middle of a click.
void dismiss(NSWindow* window);

}  // namespace ovin

NS_ASSUME_NONNULL_END
