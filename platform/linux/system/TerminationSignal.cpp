#include "platform/linux/system/TerminationSignal.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace ovin {
namespace {

/// Ignored signals must not be blocked, because a blocked one is queued although it is ignored.
bool isIgnored(int signal) {
    struct sigaction current {};
    return sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

}  // namespace

TerminationSignal::TerminationSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        if (!isIgnored(signal)) sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
}

TerminationSignal::~TerminationSignal() {
    notifier_.reset();
    close(descriptor_);
}

void TerminationSignal::listen() {
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo information{};
        if (read(descriptor_, &information, sizeof information) > 0) Q_EMIT received();
    });
}

}  // namespace ovin
