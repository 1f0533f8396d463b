#pragma once

#include <CoreGraphics/CGGeometry.h>
#include <Foundation/NSObject.h>

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

typedef struct NSEdgeInsets {
    CGFloat top;
    CGFloat left;
    CGFloat bottom;
    CGFloat right;
} NSEdgeInsets;

FOUNDATION_EXPORT const NSPoint NSZeroPoint;
FOUNDATION_EXPORT const NSSize NSZeroSize;
FOUNDATION_EXPORT const NSRect NSZeroRect;
FOUNDATION_EXPORT const NSEdgeInsets NSEdgeInsetsZero;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) { return NSPoint{x, y}; }
static inline NSSize NSMakeSize(CGFloat w, CGFloat h) { return NSSize{w, h}; }
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) { return NSRect{{x, y}, {w, h}}; }
static inline CGFloat NSMinX(NSRect aRect) { return aRect.origin.x; }
static inline CGFloat NSMinY(NSRect aRect) { return aRect.origin.y; }
static inline CGFloat NSMidX(NSRect aRect) { return aRect.origin.x + aRect.size.width * 0.5; }
static inline CGFloat NSMidY(NSRect aRect) { return aRect.origin.y + aRect.size.height * 0.5; }
static inline CGFloat NSMaxX(NSRect aRect) { return aRect.origin.x + aRect.size.width; }
static inline CGFloat NSMaxY(NSRect aRect) { return aRect.origin.y + aRect.size.height; }
static inline CGFloat NSWidth(NSRect aRect) { return aRect.size.width; }
static inline CGFloat NSHeight(NSRect aRect) { return aRect.size.height; }
static inline NSEdgeInsets NSEdgeInsetsMake(CGFloat top, CGFloat left, CGFloat bottom, CGFloat right) {
    return NSEdgeInsets{top, left, bottom, right};
}

FOUNDATION_EXPORT BOOL NSEqualRects(NSRect aRect, NSRect bRect);
FOUNDATION_EXPORT BOOL NSEqualSizes(NSSize aSize, NSSize bSize);
FOUNDATION_EXPORT BOOL NSEqualPoints(NSPoint aPoint, NSPoint bPoint);
FOUNDATION_EXPORT BOOL NSIsEmptyRect(NSRect aRect);
FOUNDATION_EXPORT NSRect NSInsetRect(NSRect aRect, CGFloat dX, CGFloat dY);
FOUNDATION_EXPORT NSRect NSOffsetRect(NSRect aRect, CGFloat dX, CGFloat dY);
FOUNDATION_EXPORT BOOL NSPointInRect(NSPoint aPoint, NSRect aRect);
FOUNDATION_EXPORT NSRect NSIntersectionRect(NSRect aRect, NSRect bRect);
