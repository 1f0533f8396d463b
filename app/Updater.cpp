#include "app/Updater.h"

#include "platform/UrlHost.h"

namespace ovin {

void Updater::checkForUpdates() {
    platform_.application.activate();
    controller().checkForUpdates();
}

UpdateFramework::Controller& Updater::controller() {
    if (!controller_) {
        controller_ =
            platform_.updates.start({[this] { return feedURLString(); }, [this] { platform_.application.activate(); }});
    }
    return *controller_;
}

/// The environment may name only a feed on this machine, so that nobody is led to a foreign one.
std::optional<std::string> Updater::feedURLString() const {
    auto feed = platform_.process.environment("OVIN_TEST_FEED");
    if (feed && !leadsToThisMachine(*feed)) feed.reset();
    return feed;
}

}  // namespace ovin
