// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// The system's font in a size and a weight. Any thread.
NSFont* nativeFont(const Font& font);

/// The font that a control shows, as a view states it: the one that was asked for as long as the control has it.
std::optional<Font> readBackFont(NSFont* _Nullable shown, const std::optional<Font>& asked);

}  // namespace ovin

NS_ASSUME_NONNULL_END
