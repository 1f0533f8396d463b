// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Geometry.h"
#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Makes the native views that show a view, laid out by AppKit. `target` receives the clicks; it may be nil. Main thread
/// only, as is all below.
NSView* makeNativeView(const View& view, OvinClickTarget* _Nullable target);

/// The size that native views take when nothing limits them. `view` has no superview yet.
Size fittingSize(NSView* view);

}  // namespace ovin

NS_ASSUME_NONNULL_END
