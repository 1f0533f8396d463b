// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Gives a button its title: as a plain one wherever text of one kind without a colour and a line is asked for, because
/// AppKit colours such titles by the state of the button; as an attributed one otherwise.
void setTitle(NSButton* button, const AttributedText& title);

}  // namespace ovin

NS_ASSUME_NONNULL_END
