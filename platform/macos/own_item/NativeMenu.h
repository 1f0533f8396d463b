// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Menu.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// A menu with all entries enabled. An entry's action runs once the menu has closed. Main thread only.
NSMenu* nativeMenu(const Menu& menu);

}  // namespace ovin

NS_ASSUME_NONNULL_END
