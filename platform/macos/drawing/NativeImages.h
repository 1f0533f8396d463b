// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>

#include "platform/Image.h"
#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// An image that the system has handed out. Any thread.
Image makeImage(NSImage* image);

/// An image that is asked for once, when it is first drawn, which is on the main thread. `load` may return nil, is dropped
/// afterwards, and keeps alive what it captures. Any thread.
Image makeImage(std::function<NSImage* _Nullable()> load);

/// What an image of this world stands for; nil when it cannot be loaded. It is shared: whoever wants it in another size
/// takes `sizedImage`. Main thread only.
NSImage* _Nullable nativeImage(const Image& image);

/// A copy that is drawn at a size; nil when the image cannot be loaded. Main thread only.
NSImage* _Nullable sizedImage(const SizedImage& image);

}  // namespace ovin

NS_ASSUME_NONNULL_END
