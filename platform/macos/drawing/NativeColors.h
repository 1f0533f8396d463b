// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Color.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// A colour of the system or a fixed one. System colours follow the appearance of the place that they are drawn in, also
/// when they have their own opacity. Any thread.
NSColor* nativeColor(const Color& color);

}  // namespace ovin

NS_ASSUME_NONNULL_END
