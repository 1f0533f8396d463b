// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// A picture at a size, with its corners cut off round by its layer. Without a name it is nothing to assistive programs.
@interface OvinImageNode : NSImageView

+ (instancetype)nodeWithImage:(const ovin::ImageView&)image;

@end

NS_ASSUME_NONNULL_END
