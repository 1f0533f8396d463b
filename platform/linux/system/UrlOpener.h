#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "platform/SystemLog.h"

namespace ovin {

/// Opens web pages and new e-mail messages in the user's programs by xdg-open. Main thread only.
class UrlOpener {
public:
    /// `log` must outlive this object.
    explicit UrlOpener(SystemLog& log) : log_(std::make_shared<Log>(log)) {}
    UrlOpener(const UrlOpener&) = delete;
    UrlOpener& operator=(const UrlOpener&) = delete;
    /// Programs that still run go on, but their failures are no longer logged.
    ~UrlOpener();

    /// Opens an address of http, https or mailto only, because other schemes could start any program. Returns at once;
    /// failures, now or later, are logged.
    void open(const std::string& url);

private:
    /// Written to by the threads that wait for programs, for as long as the log exists.
    class Log {
    public:
        explicit Log(SystemLog& log) : log_(&log) {}

        void write(const std::string& line);
        void end();

    private:
        std::mutex mutex_;
        SystemLog* log_;
    };

    const std::shared_ptr<Log> log_;
};

}  // namespace ovin
