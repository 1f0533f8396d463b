// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

/// Observes the list of running applications, in which background and accessory applications come and go as well: the
/// system's notifications of launches and ends pass over those. Main thread only.
@interface OvinApplicationsObserver : NSObject

/// `handler` is called on the thread on which the list changes, for as long as it lives.
- (instancetype)initWithWorkspace:(NSWorkspace*)workspace handler:(std::weak_ptr<const std::function<void()>>)handler;
- (instancetype)init NS_UNAVAILABLE;

/// Must be sent once, before the observer goes.
- (void)stop;

@end

NS_ASSUME_NONNULL_END
