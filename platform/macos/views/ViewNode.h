// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

using ViewContent = decltype(View::content);

}  // namespace ovin

/// A native view that shows one view of the description. What its class of AppKit has a property for is read from there; the
/// rest it keeps: images, colours, the text of empty runs, the very bytes of ill-formed text.
@protocol OvinViewNode <NSObject>

/// What it shows, read from its own state. Hiding and the spacing after it belong to `ovin::readBack`.
- (ovin::ViewContent)shownContent;

/// What it asks of the stack that it stands in.
@property(nonatomic) std::optional<double> spacingAfter;

@end

namespace ovin {

using NativeView = NSView<OvinViewNode>;

}  // namespace ovin

NS_ASSUME_NONNULL_END
