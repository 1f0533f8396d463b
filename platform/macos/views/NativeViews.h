// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/views/ClickTarget.h"
#include "platform/macos/views/ViewNode.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Makes the native views that show a view, laid out by AppKit. `target` hears of the clicks; without one nobody does. Main
/// thread only, as is all below.
NativeView* makeNativeView(const View& view, OvinClickTarget* _Nullable target);

/// The view that native views of `makeNativeView` show, read from themselves.
View readBack(NativeView* view);

/// The size that native views take when nothing holds them back.
Size fittingSize(NativeView* view);

}  // namespace ovin

NS_ASSUME_NONNULL_END
