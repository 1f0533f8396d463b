#include "platform/macos/system/MacTasks.h"

#import <Foundation/Foundation.h>
#include <pthread/qos.h>

#include <utility>

#include "platform/threads/ThreadTasks.h"

namespace ovin {
namespace {

qos_class_t qosOf(Tasks::Priority priority) {
    return priority == Tasks::Priority::userInitiated ? QOS_CLASS_USER_INITIATED : QOS_CLASS_UTILITY;
}

/// Not on the main thread, which keeps its quality: jobs run there when the system refuses a thread.
void adopt(qos_class_t qos) {
    if (!NSThread.isMainThread && qos_class_self() != qos) pthread_set_qos_class_self_np(qos, 0);
}

class MacTasks final : public Tasks {
public:
    void start(Priority priority, std::function<void()> work) override {
        const qos_class_t qos = qosOf(priority);
        threads_.start(priority, [qos, work = std::move(work)] {
            @autoreleasepool {
                adopt(qos);
                work();
            }
        });
    }

    /// The children are as urgent as the thread that waits for them.
    void forEach(std::size_t count, const std::function<void(std::size_t)>& child,
                 const std::function<void(std::size_t)>& finished) override {
        const qos_class_t qos = qos_class_self();
        const auto run = [qos, &child](std::size_t i) {
            @autoreleasepool {
                adopt(qos);
                child(i);
            }
        };
        threads_.forEach(count, run, finished);
    }

private:
    ThreadTasks threads_;
};

}  // namespace

std::unique_ptr<Tasks> makeMacTasks() { return std::make_unique<MacTasks>(); }

}  // namespace ovin
