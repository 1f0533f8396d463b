#include "platform/linux/LinuxWorld.h"

#include <QDBusConnection>
#include <utility>

#include "platform/linux/TrustPrompt.h"

namespace ovin {

std::unique_ptr<LinuxWorld> LinuxWorld::open() {
    auto session = Bus::connect();
    if (!session) return nullptr;
    return std::unique_ptr<LinuxWorld>(new LinuxWorld(std::move(session)));
}

LinuxWorld::LinuxWorld(std::unique_ptr<Bus> session)
    : session_(std::move(session)),
      watcher_(QDBusConnection::sessionBus()),
      accessibilityBus_(*session_),
      processes_(*session_),
      items_(*session_),
      workspace_(processes_, DesktopEntries(dataFolders(), messageLanguage()), process_.bundleIdentifier(), mainQueue_),
      defaults_(userDefaultsPath()),
      accessibility_({*session_, accessibilityBus_, items_, menus_}, askForTrust) {}

LinuxWorld::~LinuxWorld() = default;

Platform LinuxWorld::platform() {
    return {accessibility_, workspace_, displays_, defaults_,    process_, text_,    log_,
            clock_,         mainQueue_, tasks_,    application_, screens_, windows_, events_};
}

}  // namespace ovin
