// For Objective-C++ files only.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Calls a handler for every notification of one name, whoever posts it, until this is destroyed, even during a delivery.
/// The handler runs on the thread that posts, and may destroy its observer. Main thread only.
class NotificationObserver {
public:
    NotificationObserver(NSNotificationCenter* center, NSNotificationName name, std::function<void()> handler);
    NotificationObserver(const NotificationObserver&) = delete;
    NotificationObserver& operator=(const NotificationObserver&) = delete;
    ~NotificationObserver();

private:
    NSNotificationCenter* const center_;
    /// The block holds the handler weakly, because the centre keeps the block.
    const std::shared_ptr<const std::function<void()>> handler_;
    const id<NSObject> token_;
};

}  // namespace ovin

NS_ASSUME_NONNULL_END
