// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

/// The delegate of a window, which does not keep it alive. Calls its handler, while that exists, when the window closes by
/// its close button or by Escape. To close the window silently, remove the delegate first.
@interface OvinCloseReporter : NSObject <NSWindowDelegate>

- (instancetype)initWithHandler:(std::weak_ptr<const std::function<void()>>)handler;
- (instancetype)init NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
