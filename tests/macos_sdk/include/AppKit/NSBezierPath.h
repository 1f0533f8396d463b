#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBezierPath : NSObject <NSCopying, NSSecureCoding>
+ (NSBezierPath*)bezierPath;
+ (NSBezierPath*)bezierPathWithRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect xRadius:(CGFloat)xRadius yRadius:(CGFloat)yRadius;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
- (void)closePath;
@property CGFloat lineWidth;
- (void)stroke;
- (void)fill;
- (void)addClip;
- (void)transformUsingAffineTransform:(NSAffineTransform*)transform;
@end

NS_ASSUME_NONNULL_END
