// Ovin on the Linux desktop: the only place that chooses a world.

#include <QApplication>
#include <QPixmapCache>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>

#include "app/AppDelegate.h"
#include "platform/linux/LinuxWorld.h"
#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/session/CommandLine.h"
#include "platform/linux/session/SingleInstance.h"
#include "platform/linux/system/BootClock.h"
#include "platform/linux/system/LinuxProcessInfo.h"
#include "platform/linux/system/TerminationSignal.h"
#include "platform/linux/updates/QtUpdateFeed.h"
#include "updates/FeedUpdates.h"

namespace ovin {
namespace {

/// A program that leaves updates to the system is not even linked with the libraries for them.
constexpr bool looksForUpdates = OVIN_UPDATES;

/// How long an Ovin that runs already may take to answer, its own start included.
constexpr std::chrono::seconds patience{5};

int fail(const char* problem) {
    std::fprintf(stderr, "ovin: %s\n", problem);
    return 1;
}

/// In KiB: room for some hundred icons of the ledge's size. More would only keep pictures that nobody asks for again,
/// because icons that other programs draw are new to the toolkit each time that the ledge opens.
constexpr int pictureCache = 2048;

/// The exit status when this program is not to run.
std::optional<int> giveWay(SingleInstance& instance) {
    switch (instance.claim(patience)) {
        case SingleInstance::Claim::first:
            return std::nullopt;
        case SingleInstance::Claim::second:
            return 0;
        case SingleInstance::Claim::unresponsive:
            return fail("another Ovin is running and does not answer");
        case SingleInstance::Claim::unavailable:
            return fail("there is no session bus, or it refuses the name org.ovin.Ovin");
    }
    return 1;
}

int run(TerminationSignal& signals) {
    SingleInstance instance("org.ovin.Ovin");
    // A program that only previews one window may run beside the real one, and leaves the real one's place and other
    // programs' items alone.
    const bool isPreview = AppDelegate::isPreview(LinuxProcessInfo());
    if (!isPreview) {
        if (const auto status = giveWay(instance)) return *status;
    }
    const auto world = LinuxWorld::open(isPreview ? LinuxWorld::Watcher::never : LinuxWorld::Watcher::afterGrace);
    if (!world) return fail("there is no session bus");
    world->application().endWith(signals);
    QApplication::setWindowIcon(qtWindowIcon(world->platform().resources.applicationIcon()));

    BootClock wallClock;
    std::unique_ptr<UpdateFeed> feed;
    if constexpr (looksForUpdates) feed = std::make_unique<QtUpdateFeed>();
    std::optional<FeedUpdates> updates;
    if (feed) updates.emplace(world->platform(), *feed, wallClock);
    AppDelegate delegate(updates ? world->platform(*updates) : world->platform());
    world->application().onTerminate([&instance, &delegate] {
        instance.giveUp();
        delegate.applicationWillTerminate();
    });
    instance.onActivate([&delegate] { delegate.openLedge(); });
    delegate.applicationDidFinishLaunching();
    return world->application().run();
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    ovin::TerminationSignal signals;
    const auto application = ovin::makeApplication(argumentCount, arguments);
    QCoreApplication::setApplicationName("Ovin");
    QCoreApplication::setApplicationVersion(OVIN_VERSION);
    if (const auto status = ovin::readCommandLine()) return *status;
    QGuiApplication::setDesktopFileName("org.ovin.Ovin");
    // Ovin lives in the menu bar, so closing its last window does not end it.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QPixmapCache::setCacheLimit(ovin::pictureCache);
    return ovin::run(signals);
}
