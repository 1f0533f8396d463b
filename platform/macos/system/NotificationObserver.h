// For Objective-C++ files only.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <memory>

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Calls a handler for every notification of one name, whoever posts it, until destroyed: not for one that is just being
/// handed out either. The handler may destroy its observer, and runs on the thread that posts. Main thread only.
class NotificationObserver {
public:
    NotificationObserver(NSNotificationCenter* center, NSNotificationName name, std::function<void()> handler);
    NotificationObserver(const NotificationObserver&) = delete;
    NotificationObserver& operator=(const NotificationObserver&) = delete;
    ~NotificationObserver();

private:
    NSNotificationCenter* const center_;
    /// The centre keeps its block, and so the block does not keep this.
    const std::shared_ptr<const std::function<void()>> handler_;
    const id<NSObject> token_;
};

}  // namespace ovin

NS_ASSUME_NONNULL_END
