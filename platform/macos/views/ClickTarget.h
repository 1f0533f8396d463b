// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

using ClickHandler = std::function<void(int tag)>;

}  // namespace ovin

/// The target of the buttons of one window. The window keeps it alive, not the buttons. Tells the window's handler which
/// button was pressed. Once the handler is destroyed, presses that are still queued are dropped.
@interface OvinClickTarget : NSObject

- (instancetype)initWithHandler:(std::weak_ptr<const ovin::ClickHandler>)handler;
- (instancetype)init NS_UNAVAILABLE;

/// Makes a button report here, under its tag.
- (void)adopt:(NSButton*)button;

@end

NS_ASSUME_NONNULL_END
