#include "platform/macos/system/MacMainQueue.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <mutex>
#include <utility>

#include "platform/macos/system/CallBack.h"
#include "platform/macos/system/Reference.h"

namespace ovin {
namespace {

class RunLoopTimer final : public MainQueue::Timer {
public:
    RunLoopTimer(std::chrono::nanoseconds delay, MainQueue::Work work)
        : work_(std::make_shared<const MainQueue::Work>(std::move(work))), timer_(timerFor(delay, work_)) {
        [NSRunLoop.mainRunLoop addTimer:timer_ forMode:NSRunLoopCommonModes];
    }
    RunLoopTimer(const RunLoopTimer&) = delete;
    RunLoopTimer& operator=(const RunLoopTimer&) = delete;
    ~RunLoopTimer() override { [timer_ invalidate]; }

private:
    /// The block must not own the work, because the system may keep it for a while after the timer is destroyed.
    static NSTimer* timerFor(std::chrono::nanoseconds delay, std::weak_ptr<const MainQueue::Work> work) {
        const std::chrono::duration<double> seconds = std::max(delay, std::chrono::nanoseconds(0));
        return [NSTimer timerWithTimeInterval:seconds.count()
                                      repeats:NO
                                        block:^(NSTimer*) {
                                          // Kept alive here, because the work may destroy its own timer.
                                          if (const auto running = work.lock()) callBack(*running);
                                        }];
    }

    const std::shared_ptr<const MainQueue::Work> work_;
    NSTimer* const timer_;
};

class MacMainQueue final : public MainQueue {
public:
    MacMainQueue() {
        CFRunLoopSourceContext context{};
        context.info = this;
        context.perform = [](void* queue) { static_cast<MacMainQueue*>(queue)->runNext(); };
        source_ = Reference<CFRunLoopSourceRef>::adopt(CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &context));
        CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    }
    MacMainQueue(const MacMainQueue&) = delete;
    MacMainQueue& operator=(const MacMainQueue&) = delete;
    ~MacMainQueue() override { CFRunLoopSourceInvalidate(source_.get()); }

    void async(Work work) override {
        {
            const std::lock_guard lock(mutex_);
            waiting_.push_back(std::move(work));
        }
        signal();
    }

    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::nanoseconds delay, Work work) override {
        return std::make_unique<RunLoopTimer>(delay, std::move(work));
    }

private:
    void signal() const {
        CFRunLoopSourceSignal(source_.get());
        CFRunLoopWakeUp(CFRunLoopGetMain());
    }

    void runNext() {
        Work work;
        bool isLast = false;
        {
            const std::lock_guard lock(mutex_);
            if (waiting_.empty()) return;
            work = std::move(waiting_.front());
            waiting_.pop_front();
            isLast = waiting_.empty();
        }
        // Before the work, because it may run a nested loop in which the rest is to run.
        if (!isLast) signal();
        @autoreleasepool {
            callBack(work);
        }
    }

    std::mutex mutex_;
    std::deque<Work> waiting_;
    Reference<CFRunLoopSourceRef> source_;
};

}  // namespace

std::unique_ptr<MainQueue> makeMacMainQueue() { return std::make_unique<MacMainQueue>(); }

}  // namespace ovin
