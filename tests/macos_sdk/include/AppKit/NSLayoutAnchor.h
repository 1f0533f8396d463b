#pragma once

#import <AppKit/NSLayoutConstraint.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSLayoutDimension, NSLayoutXAxisAnchor, NSLayoutYAxisAnchor;

API_AVAILABLE(macos(10.11))
@interface NSLayoutAnchor<AnchorType> : NSObject <NSCopying, NSCoding>
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor;
- (NSLayoutConstraint*)constraintGreaterThanOrEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor;
- (NSLayoutConstraint*)constraintLessThanOrEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor;
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor constant:(CGFloat)c;
- (NSLayoutConstraint*)constraintGreaterThanOrEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor constant:(CGFloat)c;
- (NSLayoutConstraint*)constraintLessThanOrEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor constant:(CGFloat)c;
@end

API_AVAILABLE(macos(10.11))
@interface NSLayoutXAxisAnchor : NSLayoutAnchor <NSLayoutXAxisAnchor*>
@end

API_AVAILABLE(macos(10.11))
@interface NSLayoutYAxisAnchor : NSLayoutAnchor <NSLayoutYAxisAnchor*>
@end

API_AVAILABLE(macos(10.11))
@interface NSLayoutDimension : NSLayoutAnchor <NSLayoutDimension*>
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)c;
- (NSLayoutConstraint*)constraintGreaterThanOrEqualToConstant:(CGFloat)c;
- (NSLayoutConstraint*)constraintLessThanOrEqualToConstant:(CGFloat)c;
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutDimension*)anchor multiplier:(CGFloat)m;
@end

NS_ASSUME_NONNULL_END
