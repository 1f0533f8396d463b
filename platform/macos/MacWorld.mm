#include "platform/macos/MacWorld.h"

#include "platform/NoUpdates.h"
#include "platform/macos/accessibility/MacAccessibility.h"
#include "platform/macos/applications/MacWorkspace.h"
#include "platform/macos/displays/MacDisplays.h"
#include "platform/macos/displays/MacEventMonitor.h"
#include "platform/macos/displays/MacScreens.h"
#include "platform/macos/drawing/MacResources.h"
#include "platform/macos/own_item/MacStatusItem.h"
#include "platform/macos/session/MacLaunchAtLogin.h"
#include "platform/macos/system/MacMainQueue.h"
#include "platform/macos/system/MacProcessInfo.h"
#include "platform/macos/system/MacSystemLog.h"
#include "platform/macos/system/MacTasks.h"
#include "platform/macos/system/MacText.h"
#include "platform/macos/system/MacUserDefaults.h"
#include "platform/macos/updates/MacUpdates.h"
#include "platform/macos/updates/UpdateRule.h"
#include "platform/macos/windows/MacAlerts.h"
#include "platform/macos/windows/MacWindows.h"
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
