// For Objective-C++ files only.
#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include "platform/Accessibility.h"
#include "platform/macos/accessibility/MacElement.h"

namespace ovin {

/// What another process has answered, by its type; null is `Null`. Elements in it get `timeout`. An array within an array,
/// which nothing that Ovin reads has, is `Other`. Any thread.
[[nodiscard]] AttributeValue attributeValue(CFTypeRef value, MessagingTimeout timeout);

}  // namespace ovin
