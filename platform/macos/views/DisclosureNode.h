// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

/// A triangle that points down while it is on. AppKit turns it at a click; this turns it back, because only the description
/// of the view sets its state.
@interface OvinDisclosureNode : NSButton

+ (instancetype)nodeWithTriangle:(const ovin::DisclosureTriangle&)triangle target:(nullable OvinClickTarget*)target;

@end

NS_ASSUME_NONNULL_END
