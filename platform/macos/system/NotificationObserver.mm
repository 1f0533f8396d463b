#include "platform/macos/system/NotificationObserver.h"

#include <utility>

#include "platform/macos/system/CallBack.h"

namespace ovin {
namespace {

using Handler = std::function<void()>;

/// Without a queue the block runs on the posting thread, within the post.
id<NSObject> observe(NSNotificationCenter* center, NSNotificationName name, const std::weak_ptr<const Handler>& handler) {
    const std::weak_ptr<const Handler> weak = handler;
    return [center addObserverForName:name
                               object:nil
                                queue:nil
                           usingBlock:^(NSNotification*) {
                             if (const auto running = weak.lock()) callBack(*running);
                           }];
}

}  // namespace

NotificationObserver::NotificationObserver(NSNotificationCenter* center, NSNotificationName name, Handler handler)
    : center_(center),
      handler_(std::make_shared<const Handler>(std::move(handler))),
      token_(observe(center, name, handler_)) {}

NotificationObserver::~NotificationObserver() { [center_ removeObserver:token_]; }

}  // namespace ovin
