// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

/// Observes the list of running applications, because the system's notifications of launches and ends leave out background
/// and accessory applications, which the list contains. Main thread only.
@interface OvinApplicationsObserver : NSObject

/// Calls `handler` on the thread on which the list changes, for as long as the handler exists.
- (instancetype)initWithWorkspace:(NSWorkspace*)workspace handler:(std::weak_ptr<const std::function<void()>>)handler;
- (instancetype)init NS_UNAVAILABLE;

/// Must be called once, before the observer is destroyed.
- (void)stop;

@end

NS_ASSUME_NONNULL_END
