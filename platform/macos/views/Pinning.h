// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <optional>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Lower than every priority that AppKit itself gives to a view.
inline constexpr NSLayoutPriority weakestPriority = 1;

/// Fixes a width or a height at `length`, if there is one.
void fixLength(NSLayoutDimension* dimension, const std::optional<double>& length);

/// Makes `view` fill `container`, which becomes its superview.
void fill(NSView* container, NSView* view);

}  // namespace ovin

NS_ASSUME_NONNULL_END
