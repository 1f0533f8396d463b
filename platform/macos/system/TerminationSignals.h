// For Objective-C++ files only.
#pragma once

#import <dispatch/dispatch.h>

#include <functional>
#include <vector>

#include "platform/MainQueue.h"

namespace ovin {

/// Turns the signals that ask a program to end, SIGTERM, SIGINT and SIGHUP, into work of the main queue. From then on they
/// do not end the program by themselves: AppKit would not be told, and the display would stay widened. A signal that the
/// program was started to ignore, as by nohup, stays ignored.
class TerminationSignals {
public:
    /// `mainQueue` must outlive this object.
    TerminationSignals(MainQueue& mainQueue, const std::function<void()>& handler);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

private:
    std::vector<dispatch_source_t> sources_;
};

}  // namespace ovin
