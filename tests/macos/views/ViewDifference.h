// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// How the native views of a view differ from its description, seen from outside: by AppKit's properties and constraints,
/// and by what texts and layers hold.
[[nodiscard]] std::vector<std::string> differences(NSView* native, const View& view);

}  // namespace ovin

NS_ASSUME_NONNULL_END
