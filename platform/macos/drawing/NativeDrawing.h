// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <string_view>

#include "platform/Drawing.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// An image that is drawn again for every appearance that it is shown in, in its own colours. Any thread.
NSImage* nativeImage(const DrawnImage& image);

/// A symbol of the system; nil when the system has none of this name. Any thread.
NSImage* _Nullable nativeSymbol(std::string_view name, const std::string& accessibilityDescription);

}  // namespace ovin

NS_ASSUME_NONNULL_END
