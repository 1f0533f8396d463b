// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Geometry.h"
#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Makes `view` fill a window in place of the old content. The focus stays on the button with the same tag. The old content
/// stays alive while the user holds down a button of it.
void setContent(NSWindow* window, NSView* view);

/// The same, with the window at the view's fitting size, which is returned.
Size fitContent(NSWindow* window, const View& view, OvinClickTarget* target);

/// The same; the top left corner of the window stays where it is.
void replaceContent(NSWindow* window, const View& view, OvinClickTarget* target);

/// Scrolls the page that a window shows to its end, if it has one.
void scrollToEnd(NSWindow* window);

/// Closes a window for good, but keeps it alive until AppKit has finished with it: a click may be under way.
void dismiss(NSWindow* window);

}  // namespace ovin

NS_ASSUME_NONNULL_END
