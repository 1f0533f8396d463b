// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <optional>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Whether what AppKit shows is what was asked for; a colour in light and in dark.
[[nodiscard]] bool isFont(NSFont* _Nullable shown, const std::optional<Font>& asked);
[[nodiscard]] bool isColor(NSColor* _Nullable shown, const Color& asked);
/// The colour of a layer, in the appearance of the moment.
[[nodiscard]] bool isColor(CGColorRef _Nullable shown, const Color& asked);
[[nodiscard]] bool isText(NSString* _Nullable shown, const std::string& asked);
[[nodiscard]] bool isSizedImage(NSImage* _Nullable shown, const SizedImage& asked);

/// Whether something holds in light and in dark.
[[nodiscard]] bool isInEveryAppearance(const std::function<bool()>& holds);

/// The length that a constraint gives a view; nothing where the view has the length that it wants.
[[nodiscard]] std::optional<double> fixedLength(NSView* view, NSLayoutAttribute attribute);

}  // namespace ovin

NS_ASSUME_NONNULL_END
