// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// A thin horizontal line: AppKit's separator, at its own height.
@interface OvinSeparatorNode : NSBox

+ (instancetype)nodeWithSeparator:(const ovin::Separator&)separator;

@end

/// Empty space of a height.
@interface OvinSpacerNode : NSView

+ (instancetype)nodeWithSpacer:(const ovin::Spacer&)spacer;

@end

/// Empty space whose width yields before that of any other view.
@interface OvinFlexibleSpaceNode : NSView

+ (instancetype)node;

@end

NS_ASSUME_NONNULL_END
