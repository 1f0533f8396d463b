// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// A thin horizontal line: AppKit's, as high as it wants to be.
@interface OvinSeparatorNode : NSBox

+ (instancetype)nodeWithSeparator:(const ovin::Separator&)separator;

@end

/// Nothing, of a height.
@interface OvinSpacerNode : NSView

+ (instancetype)nodeWithSpacer:(const ovin::Spacer&)spacer;

@end

/// Nothing, that holds on to its width less than any other view.
@interface OvinFlexibleSpaceNode : NSView

+ (instancetype)node;

@end

NS_ASSUME_NONNULL_END
