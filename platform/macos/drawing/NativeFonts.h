// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// The system's font in a size and a weight. Any thread.
NSFont* nativeFont(const Font& font);

}  // namespace ovin

NS_ASSUME_NONNULL_END
