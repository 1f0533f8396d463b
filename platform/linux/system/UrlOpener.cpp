#include "platform/linux/system/UrlOpener.h"

#include <sys/wait.h>

#include <system_error>
#include <thread>

#include "platform/Workspace.h"
#include "platform/linux/system/StartProgram.h"

namespace ovin {
namespace {

constexpr const char* program = "xdg-open";

std::string failureOf(int status, const std::string& url) {
    const std::string end =
        WIFEXITED(status) ? "status " + std::to_string(WEXITSTATUS(status)) : "signal " + std::to_string(WTERMSIG(status));
    return std::string("Ovin: ") + program + " could not open " + url + ": it ended with " + end;
}

}  // namespace

UrlOpener::~UrlOpener() { log_->end(); }

void UrlOpener::open(const std::string& url) {
    if (!mayBeOpened(url)) return log_->write("Ovin: not an address to be opened: " + url);
    pid_t pid = 0;
    if (const int error = startProgram(program, {url}, pid)) {
        return log_->write(std::string("Ovin: ") + program +
                           " cannot be started: " + std::generic_category().message(error));
    }
    // Waits for as long as the browser may run. Any other way would take the signal of its end from the toolkit.
    std::thread([log = log_, pid, url] {
        if (const int status = awaitEnd(pid)) log->write(failureOf(status, url));
    }).detach();
}

void UrlOpener::Log::write(const std::string& line) {
    const std::lock_guard lock(mutex_);
    if (log_ != nullptr) log_->write(line);
}

void UrlOpener::Log::end() {
    const std::lock_guard lock(mutex_);
    log_ = nullptr;
}

}  // namespace ovin
