#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef float NSLayoutPriority;
static const NSLayoutPriority NSLayoutPriorityRequired = 1000;
static const NSLayoutPriority NSLayoutPriorityDefaultHigh = 750;
static const NSLayoutPriority NSLayoutPriorityDefaultLow = 250;
static const NSLayoutPriority NSLayoutPriorityFittingSizeCompression = 50;

typedef NS_ENUM(NSInteger, NSLayoutConstraintOrientation) {
    NSLayoutConstraintOrientationHorizontal = 0,
    NSLayoutConstraintOrientationVertical = 1
};

typedef NS_ENUM(NSInteger, NSLayoutRelation) {
    NSLayoutRelationLessThanOrEqual = -1,
    NSLayoutRelationEqual = 0,
    NSLayoutRelationGreaterThanOrEqual = 1
};

typedef NS_ENUM(NSInteger, NSLayoutAttribute) {
    NSLayoutAttributeLeft = 1,
    NSLayoutAttributeRight = 2,
    NSLayoutAttributeTop = 3,
    NSLayoutAttributeBottom = 4,
    NSLayoutAttributeLeading = 5,
    NSLayoutAttributeTrailing = 6,
    NSLayoutAttributeWidth = 7,
    NSLayoutAttributeHeight = 8,
    NSLayoutAttributeCenterX = 9,
    NSLayoutAttributeCenterY = 10,
    NSLayoutAttributeLastBaseline = 11,
    NSLayoutAttributeFirstBaseline = 12,
    NSLayoutAttributeNotAnAttribute = 0
};

API_AVAILABLE(macos(10.7))
@interface NSLayoutConstraint : NSObject
@property NSLayoutPriority priority;
@property(nullable, readonly, unsafe_unretained) id firstItem;
@property(nullable, readonly, unsafe_unretained) id secondItem;
@property(readonly) NSLayoutAttribute firstAttribute;
@property(readonly) NSLayoutRelation relation;
@property CGFloat constant;
@property(getter=isActive) BOOL active API_AVAILABLE(macos(10.10));
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints API_AVAILABLE(macos(10.10));
+ (void)deactivateConstraints:(NSArray<NSLayoutConstraint*>*)constraints API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
