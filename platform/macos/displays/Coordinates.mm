#include "platform/macos/displays/Coordinates.h"

#import <AppKit/AppKit.h>

namespace ovin {
namespace {

/// The screen with the menu bar is the first one, not `mainScreen`. Without screens, any result will do.
CGFloat primaryTop() {
    NSScreen* primary = NSScreen.screens.firstObject;
    return primary == nil ? 0 : NSMaxY(primary.frame);
}

}  // namespace

NSRect toNative(const Rect& rect) {
    return NSMakeRect(rect.origin.x, primaryTop() - rect.origin.y - rect.size.height, rect.size.width, rect.size.height);
}

Rect fromNative(NSRect rect) {
    return {{rect.origin.x, primaryTop() - rect.origin.y - rect.size.height}, {rect.size.width, rect.size.height}};
}

NSPoint toNative(Point point) { return NSMakePoint(point.x, primaryTop() - point.y); }

Point fromNative(NSPoint point) { return {point.x, primaryTop() - point.y}; }

}  // namespace ovin
