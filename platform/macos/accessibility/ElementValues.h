// For Objective-C++ files only.
#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include "platform/Accessibility.h"
#include "platform/macos/accessibility/MacElement.h"

namespace ovin {

/// Converts another process's answer by its type; null becomes `Null`. Elements in it get `timeout`. An array within an
/// array becomes `Other`: no attribute that Ovin reads has one. Any thread.
[[nodiscard]] AttributeValue attributeValue(CFTypeRef value, MessagingTimeout timeout);

}  // namespace ovin
