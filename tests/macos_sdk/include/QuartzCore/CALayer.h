#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface CALayer : NSObject
@property CGFloat cornerRadius;
@property BOOL masksToBounds;
@property(nullable) CGColorRef backgroundColor;
@property(nullable) CGColorRef borderColor;
@property CGFloat borderWidth;
@end

NS_ASSUME_NONNULL_END
