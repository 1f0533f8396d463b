// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Color.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// A colour of the system or a fixed one. Those of the system follow the appearance of the place that they are drawn in,
/// also with an opacity of their own. Any thread.
NSColor* nativeColor(const Color& color);

}  // namespace ovin

NS_ASSUME_NONNULL_END
