#include "platform/linux/updates/LoadedUpdateFeed.h"

#include <QLibrary>
#include <QTimer>
#include <chrono>
#include <utility>

namespace ovin {
namespace {

class NoReading final : public UpdateFeed::Reading {
public:
    explicit NoReading(std::function<void(UpdateFeed::Answer)> finished) {
        timer_.setSingleShot(true);
        // The handler may destroy this object, and itself with it.
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [finished = std::move(finished)] {
            const auto tell = finished;
            tell(FeedFailure::unreachable);
        });
        timer_.start(0);
    }

private:
    QTimer timer_;
};

}  // namespace

std::unique_ptr<UpdateFeed::Reading> LoadedUpdateFeed::read(const std::string& url, std::function<void(Answer)> finished) {
    if (!feed_) {
        QLibrary library(module_);
        const auto make = reinterpret_cast<UpdateFeed* (*)(const char*)>(library.resolve("ovinUpdateFeed"));
        if (make != nullptr) feed_.reset(make(version_.c_str()));
        if (!feed_) {
            qWarning("Ovin: updates cannot be looked for: %s",
                     make == nullptr ? qPrintable(library.errorString()) : "another version has been installed meanwhile");
            return std::make_unique<NoReading>(std::move(finished));
        }
    }
    return feed_->read(url, std::move(finished));
}

}  // namespace ovin
