#include "platform/macos/displays/MacEventMonitor.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/system/CallBack.h"

namespace ovin {
namespace {

/// Removes the monitor exactly once, because the system releases it at each removal.
class Monitor final : public EventMonitor::Token {
public:
    explicit Monitor(id monitor) : monitor_(monitor) {}
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;
    ~Monitor() override { [NSEvent removeMonitor:monitor_]; }

private:
    const id monitor_;
};

class MacEventMonitor final : public EventMonitor {
public:
    [[nodiscard]] std::unique_ptr<Token> monitorMouseDowns(std::function<void()> handler) override {
        const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
        id monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown
                                                            handler:^(NSEvent*) {
                                                              // The handler may end the monitoring, and so destroy this
                                                              // block.
                                                              const auto running = shared;
                                                              callBack(*running);
                                                            }];
        if (monitor == nil) return nullptr;
        return std::make_unique<Monitor>(monitor);
    }
};

}  // namespace

std::unique_ptr<EventMonitor> makeMacEventMonitor() { return std::make_unique<MacEventMonitor>(); }

}  // namespace ovin
