#include "platform/macos/system/RunSoon.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/system/CallBack.h"

namespace ovin {

void runSoon(std::function<void()> work) {
    const auto kept = std::move(work);
    [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                    block:^{
                                      callBack(kept);
                                    }];
}

}  // namespace ovin
