// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// A picture at a size, with corners rounded by its layer. Without a label, assistive programs ignore it.
@interface OvinImageNode : NSImageView

+ (instancetype)nodeWithImage:(const ovin::ImageView&)image;

@end

NS_ASSUME_NONNULL_END
