#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSAffineTransform : NSObject <NSCopying, NSSecureCoding>
+ (NSAffineTransform*)transform;
- (void)translateXBy:(CGFloat)deltaX yBy:(CGFloat)deltaY;
- (void)rotateByDegrees:(CGFloat)angle;
- (void)rotateByRadians:(CGFloat)angle;
- (void)scaleBy:(CGFloat)scale;
- (void)appendTransform:(NSAffineTransform*)transform;
- (void)prependTransform:(NSAffineTransform*)transform;
@end

NS_ASSUME_NONNULL_END
