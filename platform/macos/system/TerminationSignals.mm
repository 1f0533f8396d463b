#include "platform/macos/system/TerminationSignals.h"

#include <csignal>

#include "platform/macos/system/CallBack.h"

namespace ovin {

/// On a global queue, because the main one is blocked while a block of it shows an alert.
TerminationSignals::TerminationSignals(MainQueue& mainQueue, const std::function<void()>& handler) {
    dispatch_queue_t queue = dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0);
    MainQueue* const destination = &mainQueue;
    // A copy, because a block would capture the reference, which is valid only in this call.
    const std::function<void()> kept = handler;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        // An ignored signal still reaches a dispatch source, and has no other effect.
        if (std::signal(signal, SIG_IGN) == SIG_IGN) continue;
        dispatch_source_t source =
            dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(signal), 0, queue);
        dispatch_source_set_event_handler(source, ^{
          callBack([&] { destination->async(kept); });
        });
        dispatch_resume(source);
        sources_.push_back(source);
    }
}

TerminationSignals::~TerminationSignals() {
    for (dispatch_source_t source : sources_) dispatch_source_cancel(source);
}

}  // namespace ovin
