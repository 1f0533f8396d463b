// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Gives a button its title: text of one style without a colour and an underline as a plain title, because AppKit colours
/// plain titles by the state of the button; other text as an attributed title.
void setTitle(NSButton* button, const AttributedText& title);

}  // namespace ovin

NS_ASSUME_NONNULL_END
