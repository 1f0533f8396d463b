#include "platform/linux/LinuxWorld.h"

#include <QDBusConnection>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/windows/TrustPrompt.h"

namespace ovin {
namespace {

/// Programs react to a new watcher within milliseconds; these times allow for a busy machine and for a thousand programs.
constexpr std::chrono::milliseconds quietTime{200};
constexpr std::chrono::seconds longestWait{10};

}  // namespace

std::unique_ptr<LinuxWorld> LinuxWorld::open(Watcher watcher) {
    auto session = Bus::connect();
    if (!session) return nullptr;
    return std::unique_ptr<LinuxWorld>(new LinuxWorld(std::move(session), watcher));
}

LinuxWorld::LinuxWorld(std::unique_ptr<Bus> session, Watcher watcher)
    : session_(std::move(session)),
      processes_(*session_),
      items_(*session_),
      accessibilityBus_(*session_),
      workspace_(processes_, items_, process_.bundleIdentifier(), mainQueue_, log_),
      defaults_(userDefaultsPath()),
      consent_(accessibilityBus_, defaults_, mainQueue_),
      accessibility_({*session_, accessibilityBus_, consent_, items_, menus_, barSettings_, hasBar_}, askForTrust) {
    if (watcher) watcher_.emplace(QDBusConnection::sessionBus(), mainQueue_, *watcher);
    // What only looks, or shows one window, changes nothing.
    if (watcher == WatcherClaim::Begin::afterGrace) consent_.beginToAct();
    if (!defaults_.isReadable())
        log_.write("Ovin: the settings cannot be read, and are left as they are: " + defaults_.place());
}

LinuxWorld::~LinuxWorld() = default;

void LinuxWorld::waitForAnswers() {
    accessibilityBus_.waitForAnswer();
    if (!watcher_) return;
    if (watcher_->isOwner()) waitForQuiet();

    std::vector<std::string> entries;
    for (const QString& entry : watcher_->registeredItems()) entries.push_back(entry.toStdString());
    items_.waitFor(entries);
}

void LinuxWorld::waitForQuiet() {
    QEventLoop loop;
    QTimer quiet;
    quiet.setSingleShot(true);
    QObject::connect(&quiet, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&*watcher_, &StatusNotifierWatcher::StatusNotifierItemRegistered, &quiet,
                     [&quiet] { quiet.start(quietTime); });
    quiet.start(quietTime);
    QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
    loop.exec();
}

Platform LinuxWorld::platform(UpdateFramework& updates) {
    return {accessibility_, workspace_, displays_,      defaults_,    process_, text_,    log_,
            clock_,         mainQueue_, tasks_,         application_, screens_, windows_, events_,
            statusBar_,     alerts_,    launchAtLogin_, resources_,   updates};
}

}  // namespace ovin
