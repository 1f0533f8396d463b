// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// Views one after the other, in front of a box where there is one. `views` show the views of the stack, in the same order.
/// What is left over along a row goes to its flexible spaces; without one the views stay together at its beginning.
@interface OvinStackNode : NSStackView

+ (instancetype)nodeWithStack:(const ovin::Stack&)stack views:(NSArray<NSView*>*)views;

@end

NS_ASSUME_NONNULL_END
