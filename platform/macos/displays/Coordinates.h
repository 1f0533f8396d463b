// For Objective-C++ files only.
#pragma once

#import <Foundation/Foundation.h>

#include "platform/Geometry.h"

namespace ovin {

// Convert between AppKit's coordinates, whose origin is the bottom left of the primary screen with y growing upwards, and
// the global ones. The screen's height is read at each call, because it may change. Main thread only.

NSRect toNative(const Rect& rect);
Rect fromNative(NSRect rect);
NSPoint toNative(Point point);
Point fromNative(NSPoint point);

}  // namespace ovin
