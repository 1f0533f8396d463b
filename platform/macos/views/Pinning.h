// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <optional>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Lower than every priority that AppKit gives to a view by itself.
inline constexpr NSLayoutPriority weakestPriority = 1;

/// Holds a width or a height at a length; the constraint is active.
NSLayoutConstraint* fixLength(NSLayoutDimension* dimension, double length);

/// The same where there is a length; nil otherwise.
NSLayoutConstraint* _Nullable fixLength(NSLayoutDimension* dimension, const std::optional<double>& length);

/// The length that a constraint holds now; nothing without one or when it was taken away.
std::optional<double> fixedLength(NSLayoutConstraint* _Nullable constraint);

/// The same where there is always a length.
double fixedLengthOr(NSLayoutConstraint* _Nullable constraint, double otherwise);

/// Makes `view` fill `container`, which becomes its superview.
void fill(NSView* container, NSView* view);

}  // namespace ovin

NS_ASSUME_NONNULL_END
