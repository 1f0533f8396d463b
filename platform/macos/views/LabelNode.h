// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// A line of text or a paragraph. Cannot be selected, because the editor for that drops the styles of the text.
@interface OvinLabelNode : NSTextField

+ (instancetype)nodeWithLabel:(const ovin::Label&)label;

@end

NS_ASSUME_NONNULL_END
