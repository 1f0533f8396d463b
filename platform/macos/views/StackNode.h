// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

/// Views one after the other, in front of the stack's box if it has one. `views` show the views of the stack, in the same
/// order. Spare room of a row goes to its flexible spaces; without any, the views stay together at its beginning.
@interface OvinStackNode : NSStackView

+ (instancetype)nodeWithStack:(const ovin::Stack&)stack views:(NSArray<NSView*>*)views;

@end

NS_ASSUME_NONNULL_END
