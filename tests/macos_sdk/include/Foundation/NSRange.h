#pragma once

#include <Foundation/NSObject.h>

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSRange NSMakeRange(NSUInteger loc, NSUInteger len) { return NSRange{loc, len}; }
static inline NSUInteger NSMaxRange(NSRange range) { return range.location + range.length; }
static inline BOOL NSLocationInRange(NSUInteger loc, NSRange range) {
    return loc >= range.location && loc - range.location < range.length;
}
static inline BOOL NSEqualRanges(NSRange range1, NSRange range2) {
    return range1.location == range2.location && range1.length == range2.length;
}
