#pragma once

#include <Foundation/NSGeometry.h>
#include <Foundation/NSObject.h>
#include <Foundation/NSRange.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSValue : NSObject <NSCopying, NSSecureCoding>
+ (NSValue*)valueWithPointer:(nullable const void*)pointer;
@property(nullable, readonly) void* pointerValue;
+ (NSValue*)valueWithPoint:(NSPoint)point;
+ (NSValue*)valueWithSize:(NSSize)size;
+ (NSValue*)valueWithRect:(NSRect)rect;
+ (NSValue*)valueWithRange:(NSRange)range;
@property(readonly) NSPoint pointValue;
@property(readonly) NSSize sizeValue;
@property(readonly) NSRect rectValue;
@property(readonly) NSRange rangeValue;
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithChar:(char)value;
+ (NSNumber*)numberWithUnsignedChar:(unsigned char)value;
+ (NSNumber*)numberWithShort:(short)value;
+ (NSNumber*)numberWithUnsignedShort:(unsigned short)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithUnsignedInt:(unsigned int)value;
+ (NSNumber*)numberWithLong:(long)value;
+ (NSNumber*)numberWithUnsignedLong:(unsigned long)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)value;
+ (NSNumber*)numberWithFloat:(float)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value;
@property(readonly) int intValue;
@property(readonly) unsigned int unsignedIntValue;
@property(readonly) long longValue;
@property(readonly) long long longLongValue;
@property(readonly) unsigned long long unsignedLongLongValue;
@property(readonly) float floatValue;
@property(readonly) double doubleValue;
@property(readonly) BOOL boolValue;
@property(readonly) NSInteger integerValue;
@property(readonly) NSUInteger unsignedIntegerValue;
@property(readonly, copy) NSString* stringValue;
- (BOOL)isEqualToNumber:(NSNumber*)number;
- (NSComparisonResult)compare:(NSNumber*)otherNumber;
@end

NS_ASSUME_NONNULL_END
