#include "platform/macos/MacWorld.h"

#include "platform/NoUpdates.h"
#include "platform/macos/MacAccessibility.h"
#include "platform/macos/MacAlerts.h"
#include "platform/macos/MacDisplays.h"
#include "platform/macos/MacEventMonitor.h"
#include "platform/macos/MacLaunchAtLogin.h"
#include "platform/macos/MacMainQueue.h"
#include "platform/macos/MacProcessInfo.h"
#include "platform/macos/MacResources.h"
#include "platform/macos/MacScreens.h"
#include "platform/macos/MacStatusItem.h"
#include "platform/macos/MacSystemLog.h"
#include "platform/macos/MacTasks.h"
#include "platform/macos/MacText.h"
#include "platform/macos/MacUpdates.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/MacWindows.h"
#include "platform/macos/MacWorkspace.h"
#include "platform/macos/UpdateRule.h"
#include "platform/threads/SteadyClock.h"

namespace ovin {
namespace {

std::unique_ptr<UpdateFramework> makeUpdates(const Resources& bundle, Alerts& alerts) {
    auto framework = canUpdate(bundle) ? makeMacUpdates() : nullptr;
    if (framework) return framework;
    return std::make_unique<NoUpdates>(alerts, Alert{"This copy of Ovin does not update itself",
                                                     "It was built without what it takes to know genuine updates."});
}

}  // namespace

MacWorld::MacWorld()
    : mainQueue_(makeMacMainQueue()),
      application_(*mainQueue_),
      log_(makeMacSystemLog()),
      process_(makeMacProcessInfo()),
      clock_(std::make_unique<SteadyClock>()),
      text_(makeMacText()),
      defaults_(makeMacUserDefaults()),
      resources_(makeMacResources()),
      workspace_(makeMacWorkspace(*mainQueue_, *log_)),
      displays_(makeMacDisplays()),
      accessibility_(makeMacAccessibility()),
      screens_(makeMacScreens()),
      windows_(makeMacWindows()),
      events_(makeMacEventMonitor()),
      statusBar_(makeMacStatusBar()),
      alerts_(makeMacAlerts()),
      launchAtLogin_(makeMacLaunchAtLogin()),
      updates_(makeUpdates(*resources_, *alerts_)),
      tasks_(makeMacTasks()) {}

MacWorld::~MacWorld() = default;

Platform MacWorld::platform() {
    return {*accessibility_, *workspace_, *displays_,      *defaults_,   *process_, *text_,    *log_,
            *clock_,         *mainQueue_, *tasks_,         application_, *screens_, *windows_, *events_,
            *statusBar_,     *alerts_,    *launchAtLogin_, *resources_,  *updates_};
}

}  // namespace ovin
