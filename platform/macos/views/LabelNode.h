// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// A line of text or a paragraph, which cannot be selected: the editor that would come up drops the kinds of text.
@interface OvinLabelNode : NSTextField

+ (instancetype)nodeWithLabel:(const ovin::Label&)label;

@end

NS_ASSUME_NONNULL_END
