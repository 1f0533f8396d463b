// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

using ClickHandler = std::function<void(int tag)>;

}  // namespace ovin

/// The target of the buttons of one window, which they do not keep alive: the window does. Tells the window's handler which
/// button was pressed, and nobody once the handler is gone, not even of a press that was already on its way.
@interface OvinClickTarget : NSObject

- (instancetype)initWithHandler:(std::weak_ptr<const ovin::ClickHandler>)handler;
- (instancetype)init NS_UNAVAILABLE;

/// Makes a button report here, under its tag.
- (void)adopt:(NSButton*)button;

@end

NS_ASSUME_NONNULL_END
