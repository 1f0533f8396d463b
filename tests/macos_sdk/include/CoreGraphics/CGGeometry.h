#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXPORT const CGPoint CGPointZero;
CF_EXPORT const CGSize CGSizeZero;
CF_EXPORT const CGRect CGRectZero;
CF_EXPORT const CGRect CGRectNull;

static inline CGPoint CGPointMake(CGFloat x, CGFloat y) { return CGPoint{x, y}; }
static inline CGSize CGSizeMake(CGFloat width, CGFloat height) { return CGSize{width, height}; }
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return CGRect{{x, y}, {width, height}};
}

CF_EXPORT CGFloat CGRectGetMinX(CGRect rect);
CF_EXPORT CGFloat CGRectGetMidX(CGRect rect);
CF_EXPORT CGFloat CGRectGetMaxX(CGRect rect);
CF_EXPORT CGFloat CGRectGetMinY(CGRect rect);
CF_EXPORT CGFloat CGRectGetMidY(CGRect rect);
CF_EXPORT CGFloat CGRectGetMaxY(CGRect rect);
CF_EXPORT CGFloat CGRectGetWidth(CGRect rect);
CF_EXPORT CGFloat CGRectGetHeight(CGRect rect);
CF_EXPORT CGRect CGRectIntersection(CGRect r1, CGRect r2);
CF_EXPORT bool CGRectIsNull(CGRect rect);
CF_EXPORT bool CGRectIsEmpty(CGRect rect);
CF_EXPORT bool CGRectContainsPoint(CGRect rect, CGPoint point);
