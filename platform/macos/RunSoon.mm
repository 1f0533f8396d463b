#include "platform/macos/RunSoon.h"

#import <Foundation/Foundation.h>

#include <utility>

namespace ovin {

void runSoon(std::function<void()> work) {
    const auto kept = std::move(work);
    [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                    block:^{
                                      callBack(kept);
                                    }];
}

void callBack(const std::function<void()>& work) noexcept { work(); }

}  // namespace ovin
