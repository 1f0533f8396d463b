// Ovin on the Linux desktop: the only place that chooses a world.

#include <malloc.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "app/AppDelegate.h"
#include "app/Command.h"
#include "platform/linux/LinuxWorld.h"
#include "platform/linux/drawing/IconLoader.h"
#include "platform/linux/session/CommandLine.h"
#include "platform/linux/session/SingleInstance.h"
#include "platform/linux/system/BootClock.h"
#include "platform/linux/system/LinuxProcessInfo.h"
#include "platform/linux/system/TerminationSignal.h"
#include "platform/linux/updates/LoadedUpdateFeed.h"
#include "updates/FeedUpdates.h"

namespace ovin {
namespace {

constexpr bool looksForUpdates = OVIN_UPDATES;

/// How long an Ovin that runs already may take to answer, its own start included.
constexpr std::chrono::seconds patience{5};

int fail(const char* problem) {
    std::fprintf(stderr, "ovin: %s\n", problem);
    return 1;
}

/// The exit status when this program is not to run.
std::optional<int> giveWay(SingleInstance& instance, const QString& action) {
    switch (instance.claim(patience, action)) {
        case SingleInstance::Claim::first:
            // Nobody runs who could be told to end.
            return commandNamed(action.toStdString()) == Command::quit ? std::optional(0) : std::nullopt;
        case SingleInstance::Claim::second:
            return 0;
        case SingleInstance::Claim::unresponsive:
            return fail("another Ovin is running and does not answer");
        case SingleInstance::Claim::unavailable:
            return fail("there is no session bus, or it refuses the name org.ovin.Ovin");
    }
    return 1;
}

std::vector<CommandLineAction> actions() {
    std::vector<CommandLineAction> result;
    for (const NamedCommand& named : namedCommands) {
        result.push_back({QString::fromUtf8(named.name.data(), static_cast<qsizetype>(named.name.size())),
                          QString::fromUtf8(named.help.data(), static_cast<qsizetype>(named.help.size()))});
    }
    return result;
}

/// Does what another program has asked for; names that nobody knows are ignored.
void perform(AppDelegate& delegate, const QString& action) {
    if (action.isEmpty()) return delegate.openAgain();
    if (const auto command = commandNamed(action.toStdString())) delegate.perform(*command);
}

/// Menus, texts and pictures of other programs may be large, and are read in many threads. By default the C library keeps
/// twice as much free memory as the largest block took that was ever freed (64 MiB at most), in each of eight pools for
/// every processor.
void returnFreedMemory() {
    mallopt(M_MMAP_THRESHOLD, 128 << 10);
    mallopt(M_ARENA_MAX, 4);
}

int run(TerminationSignal& signals, const QString& action) {
    SingleInstance instance("org.ovin.Ovin");
    // A program that only previews one window may run beside the real one, and leaves the real one's place and other
    // programs' items alone.
    const bool isPreview = action.isEmpty() && AppDelegate::isPreview(LinuxProcessInfo());
    if (!isPreview) {
        if (const auto status = giveWay(instance, action)) return *status;
    }
    const auto world = LinuxWorld::open(isPreview ? std::nullopt : std::optional(WatcherClaim::Begin::afterGrace));
    if (!world) return fail("there is no session bus");
    world->application().endWith(signals);
    IconLoader::share(std::make_unique<IconLoader>("/proc/self/exe"));

    BootClock wallClock;
    std::unique_ptr<UpdateFeed> feed;
    if constexpr (looksForUpdates) {
        feed = std::make_unique<LoadedUpdateFeed>(QCoreApplication::applicationDirPath() + "/../lib/ovin/update-feed.so",
                                                  OVIN_VERSION);
    }
    std::optional<FeedUpdates> updates;
    if (feed) updates.emplace(world->platform(), *feed, wallClock);
    AppDelegate delegate(updates ? world->platform(*updates) : world->platform());
    world->application().onTerminate([&instance, &delegate] {
        instance.giveUp();
        delegate.applicationWillTerminate();
    });
    instance.onActivate([&delegate](const QString& name) { perform(delegate, name); });
    delegate.applicationDidFinishLaunching();
    if (!action.isEmpty()) perform(delegate, action);
    return world->application().run();
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    if (argumentCount == 2 && std::string_view(arguments[1]) == ovin::readIconsArgument) return ovin::readIcons();
    ovin::returnFreedMemory();
    ovin::TerminationSignal signals;
    const auto application = ovin::makeApplication(argumentCount, arguments);
    QCoreApplication::setApplicationName("Ovin");
    QCoreApplication::setApplicationVersion(OVIN_VERSION);
    const auto commandLine = ovin::readCommandLine(ovin::actions());
    if (commandLine.status) return *commandLine.status;
    QGuiApplication::setDesktopFileName("org.ovin.Ovin");
    // Ovin lives in the menu bar, so closing its last window does not end it.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return ovin::run(signals, commandLine.action);
}
