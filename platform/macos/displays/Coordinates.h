// For Objective-C++ files only.
#pragma once

#import <Foundation/Foundation.h>

#include "platform/Geometry.h"

namespace ovin {

// AppKit counts from the bottom left of the primary screen upwards, the interfaces from its top left downwards. The primary
// screen is asked for its height at each call, since every change of the screens may change it. Main thread only.

NSRect toNative(const Rect& rect);
Rect fromNative(NSRect rect);
NSPoint toNative(Point point);
Point fromNative(NSPoint point);

}  // namespace ovin
