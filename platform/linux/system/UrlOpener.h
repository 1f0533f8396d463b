#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "platform/SystemLog.h"

namespace ovin {

/// Hands web pages and letters to the user's programs by xdg-open. Main thread only.
class UrlOpener {
public:
    /// `log` must outlive this object.
    explicit UrlOpener(SystemLog& log) : log_(std::make_shared<Log>(log)) {}
    UrlOpener(const UrlOpener&) = delete;
    UrlOpener& operator=(const UrlOpener&) = delete;
    /// Programs that still run go on; what becomes of them is no longer logged.
    ~UrlOpener();

    /// Opens an address of http, https or mailto, and nothing else: other kinds could start anything. Returns at once; what
    /// fails, now or later, is logged.
    void open(const std::string& url);

private:
    /// Written to by those that wait for programs, for as long as there is a log.
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
