// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <optional>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Lower than every priority that AppKit gives to a view by itself.
inline constexpr NSLayoutPriority weakestPriority = 1;

/// Holds a width or a height at a length, where there is one.
void fixLength(NSLayoutDimension* dimension, const std::optional<double>& length);

/// Makes `view` fill `container`, which becomes its superview.
void fill(NSView* container, NSView* view);

}  // namespace ovin

NS_ASSUME_NONNULL_END
