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
        const auto make = reinterpret_cast<UpdateFeed* (*)()>(library.resolve("ovinUpdateFeed"));
        if (make == nullptr) {
            qWarning("Ovin: updates cannot be looked for: %s", qPrintable(library.errorString()));
            return std::make_unique<NoReading>(std::move(finished));
        }
        feed_.reset(make());
    }
    return feed_->read(url, std::move(finished));
}

}  // namespace ovin
