#include "platform/macos/NotificationObserver.h"

#include <utility>

namespace ovin {

NotificationObserver::NotificationObserver(NSNotificationCenter* center, NSNotificationName name,
                                           std::function<void()> handler)
    : center_(center), handler_(std::make_shared<const std::function<void()>>(std::move(handler))) {
    const std::weak_ptr<const std::function<void()>> weak = handler_;
    // Without a queue the block runs where the notification is posted, at that very moment.
    token_ = [center addObserverForName:name
                                 object:nil
                                  queue:nil
                             usingBlock:^(NSNotification*) {
                               if (const auto running = weak.lock()) (*running)();
                             }];
}

NotificationObserver::~NotificationObserver() { [center_ removeObserver:token_]; }

}  // namespace ovin
