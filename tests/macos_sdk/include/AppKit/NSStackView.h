#pragma once

#import <AppKit/NSUserInterfaceLayout.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NSStackViewDistribution) {
    NSStackViewDistributionGravityAreas = -1,
    NSStackViewDistributionFill = 0,
    NSStackViewDistributionFillEqually = 1,
    NSStackViewDistributionFillProportionally = 2,
    NSStackViewDistributionEqualSpacing = 3,
    NSStackViewDistributionEqualCentering = 4
};

static const CGFloat NSStackViewSpacingUseDefault API_AVAILABLE(macos(10.9)) = __FLT_MAX__;

API_AVAILABLE(macos(10.9))
@interface NSStackView : NSView
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views;
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSEdgeInsets edgeInsets;
@property NSStackViewDistribution distribution API_AVAILABLE(macos(10.11));
@property CGFloat spacing;
- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view;
- (CGFloat)customSpacingAfterView:(NSView*)view;
@property BOOL detachesHiddenViews API_AVAILABLE(macos(10.11));
@property(readonly, copy) NSArray<NSView*>* arrangedSubviews API_AVAILABLE(macos(10.11));
- (void)addArrangedSubview:(NSView*)view API_AVAILABLE(macos(10.11));
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index API_AVAILABLE(macos(10.11));
- (void)removeArrangedSubview:(NSView*)view API_AVAILABLE(macos(10.11));
- (void)setHuggingPriority:(NSLayoutPriority)priority forOrientation:(NSLayoutConstraintOrientation)orientation;
@end

NS_ASSUME_NONNULL_END
