// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"
#include "platform/macos/views/ClickTarget.h"

NS_ASSUME_NONNULL_BEGIN

/// A triangle that points down while it is on. AppKit turns it with a click; it turns back, because whoever described it
/// decides what becomes of it.
@interface OvinDisclosureNode : NSButton

+ (instancetype)nodeWithTriangle:(const ovin::DisclosureTriangle&)triangle target:(nullable OvinClickTarget*)target;

@end

NS_ASSUME_NONNULL_END
