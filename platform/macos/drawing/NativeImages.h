// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>

#include "platform/Image.h"
#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Wraps an image that the system has returned. Any thread.
Image makeImage(NSImage* image);

/// Makes an image that calls `load` once, on the main thread, when it is first drawn. `load` may return nil; it is destroyed
/// with its captures after the call. Any thread.
Image makeImage(std::function<NSImage* _Nullable()> load);

/// The native image of an image of this world; nil when it cannot be loaded. It is shared, so use `sizedImage` for another
/// size. Main thread only.
NSImage* _Nullable nativeImage(const Image& image);

/// A copy that is drawn at a size; nil when the image cannot be loaded. Main thread only.
NSImage* _Nullable sizedImage(const SizedImage& image);

}  // namespace ovin

NS_ASSUME_NONNULL_END
